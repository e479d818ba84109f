// SPDX-License-Identifier: MIT
// A threaded filter with the published `Enabled` switch.
#pragma once

#include "framework/QNBasicThreadedFilter.h"

namespace framix {

class TQNBasicThreadedEnableFilter : public TQNBasicThreadedFilter {
public:
    static constexpr TFXBoolProp kEnabled{
        .Name = "Enabled", .Help = "a disabled filter passes everything on unchanged",
        .Default = true, .Flags = pfStored | pfRuntime};

    explicit TQNBasicThreadedEnableFilter(TKTComponent* owner);
    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    virtual bool IsEnabled() const;
    bool GetEnabled() const { return IsEnabled(); }
    virtual void SetEnabled(bool value);

private:
    bool FEnabled = kEnabled.Default;
};

} // namespace framix
