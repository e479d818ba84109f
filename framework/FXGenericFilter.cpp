// SPDX-License-Identifier: MIT
// The callback filter.
#include "framework/FXGenericFilter.h"

#include "framework/properties/FXPalette.h"

namespace framix {

TFXGenericFilter::TFXGenericFilter(TKTComponent* owner) : TFXCommonFilter(owner) {}

const TFXClassInfo& TFXGenericFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXEvent({.Name = "OnProcessData", .Help = "processes each frame"}),
    };
    static const TFXClassInfo info{"TFXGenericFilter", &TFXCommonFilter::ClassInfo(), kProps};
    return info;
}

void TFXGenericFilter::SetVideoFormat(IFXImageBuffer& buffer)
{
    AdmitFormats(buffer, kFXNativeFormats);
}

void TFXGenericFilter::FilterInternalOperation(IFXImageBuffer& input, IFXImageBuffer& output)
{
    if (OnProcessData)
        OnProcessData(*this, input, output);
}

void RegisterFXGenericFilter(TFXPalette& palette)
{
    palette.Register<TFXGenericFilter>(kFXPalettePage);
}

} // namespace framix
