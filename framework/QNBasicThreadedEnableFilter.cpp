// SPDX-License-Identifier: MIT
// The enable switch of filters.
#include "framework/QNBasicThreadedEnableFilter.h"

namespace framix {

TQNBasicThreadedEnableFilter::TQNBasicThreadedEnableFilter(TKTComponent* owner)
    : TQNBasicThreadedFilter(owner)
{
}

const TFXClassInfo& TQNBasicThreadedEnableFilter::ClassInfo()
{
    static constexpr TFXPropInfo kProps[] = {
        FXProp<&TQNBasicThreadedEnableFilter::GetEnabled,
               &TQNBasicThreadedEnableFilter::SetEnabled>(kEnabled),
    };
    static const TFXClassInfo info{"TQNBasicThreadedEnableFilter",
                                   &TQNBasicThreadedFilter::ClassInfo(), kProps};
    return info;
}

bool TQNBasicThreadedEnableFilter::IsEnabled() const
{
    auto guard = Lock().Read();
    return FEnabled;
}

void TQNBasicThreadedEnableFilter::SetEnabled(bool value)
{
    Lock().StoreNotify(FEnabled, value, [this] { EnabledChanged(); });
}

} // namespace framix
