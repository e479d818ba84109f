// SPDX-License-Identifier: MIT
// The paired lock's fixed-order entry.
#include "framework/KTLock.h"

#include <functional>

namespace framix {

TKTPairedLock::TKTPairedLock(IKTLock& first, IKTLock& second)
{
    const bool inOrder = std::less<IKTLock*>()(&first, &second);
    FFirst = inOrder ? &first : &second;
    FSecond = inOrder ? &second : &first;
}

void TKTPairedLock::Enter()
{
    FFirst->Enter();
    if (FSecond != FFirst)
        FSecond->Enter();
}

void TKTPairedLock::Leave()
{
    if (FSecond != FFirst)
        FSecond->Leave();
    FFirst->Leave();
}

bool TKTPairedLock::TryEnter()
{
    if (!FFirst->TryEnter())
        return false;
    if (FSecond != FFirst && !FSecond->TryEnter()) {
        FFirst->Leave();
        return false;
    }
    return true;
}

} // namespace framix
