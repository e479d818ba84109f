// SPDX-License-Identifier: MIT
// The component lock: one per component, guarding its properties against the frame thread.
#pragma once

#include <algorithm>
#include <mutex>
#include <type_traits>

namespace framix {

class IKTLock;

// Leaves the lock when it goes out of scope.
class TKTLockGuard {
public:
    explicit TKTLockGuard(IKTLock& lock);
    ~TKTLockGuard();
    TKTLockGuard(const TKTLockGuard&) = delete;
    TKTLockGuard& operator=(const TKTLockGuard&) = delete;

private:
    IKTLock& FLock;
};

// Every component has one IKTLock. Setters store under it; the filter bases hold it around
// SetSizeRate, StreamStart and the per-frame call, so settings never change within a frame.
// The lock is recursive: a change handler that runs under it may call other setters.
class IKTLock {
public:
    virtual ~IKTLock() = default;
    virtual void Enter() = 0;
    virtual void Leave() = 0;
    virtual bool TryEnter() = 0;

    // A getter enters the lock through Read, a setter through Write; both give a guard.
    [[nodiscard]] TKTLockGuard Read() { return TKTLockGuard(*this); }
    [[nodiscard]] TKTLockGuard Write() { return TKTLockGuard(*this); }

    // Plain store. Returns whether the value changed.
    template <class T, class V>
    bool Store(T& field, const V& value)
    {
        TKTLockGuard guard(*this);
        if (field == T(value))
            return false;
        field = T(value);
        return true;
    }

    // Range-checked store: the value is clamped to the declaration's Min and Max.
    template <class T, class V, class Decl>
    bool StoreClamped(T& field, V value, const Decl& decl)
    {
        using Wide = std::conditional_t<std::is_floating_point_v<T>, double, long double>;
        Wide v = Wide(value);
        v = std::clamp(v, Wide(decl.Min), Wide(decl.Max));
        return Store(field, T(v));
    }

    // Store, then run the change notification (still under the lock, so a rebuilt table is
    // never seen half-built by the frame thread) when the value changed.
    template <class T, class V, class F>
    bool StoreNotify(T& field, const V& value, F&& onChange)
    {
        TKTLockGuard guard(*this);
        if (!Store(field, value))
            return false;
        onChange();
        return true;
    }
};

inline TKTLockGuard::TKTLockGuard(IKTLock& lock) : FLock(lock) { FLock.Enter(); }
inline TKTLockGuard::~TKTLockGuard() { FLock.Leave(); }

// The ordinary component lock.
class TKTLock final : public IKTLock {
public:
    void Enter() override { FMutex.lock(); }
    void Leave() override { FMutex.unlock(); }
    bool TryEnter() override { return FMutex.try_lock(); }

private:
    std::recursive_mutex FMutex;
};

// Two locks taken as one (multi-input components guard their hand-off with it). Both are
// entered in a fixed order, whatever order callers name them in, so two paired locks over the
// same pair can never deadlock each other.
class TKTPairedLock final : public IKTLock {
public:
    TKTPairedLock(IKTLock& first, IKTLock& second);
    void Enter() override;
    void Leave() override;
    bool TryEnter() override;

private:
    IKTLock* FFirst;
    IKTLock* FSecond;
};

} // namespace framix
