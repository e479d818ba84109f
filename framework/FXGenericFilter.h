// SPDX-License-Identifier: MIT
// A filter whose per-frame work an application supplies as a callback.
#pragma once

#include <functional>

#include "framework/FXCommonFilter.h"

namespace framix {

// Admits vfRGB24, vfRGB32, vfGray8 and vfGray16 (other formats arrive as vfRGB24) and calls
// OnProcessData with the input and the output, which holds the input image; write the result
// through the output's write or modify pointer. Without a callback frames pass unchanged.
class TFXGenericFilter : public TFXCommonFilter {
public:
    using TFXProcessEvent = std::function<void(TFXGenericFilter& sender, IFXImageBuffer& input,
                                               IFXImageBuffer& output)>;

    explicit TFXGenericFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TFXProcessEvent OnProcessData;

protected:
    void SetVideoFormat(IFXImageBuffer& buffer) override;
    void FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output) override;
};

} // namespace framix
