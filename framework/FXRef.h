// SPDX-License-Identifier: MIT
// The smart handle of intrusively reference-counted objects.
#pragma once

#include <utility>

namespace framix {

// Holds one reference of a T with AddRef/Release. Adopting a fresh object takes its first
// reference.
template <class T>
class TFXRef {
public:
    TFXRef() = default;
    TFXRef(std::nullptr_t) {}
    TFXRef(T* object) : FObject(object)
    {
        if (FObject)
            FObject->AddRef();
    }
    TFXRef(const TFXRef& other) : TFXRef(other.FObject) {}
    TFXRef(TFXRef&& other) noexcept : FObject(std::exchange(other.FObject, nullptr)) {}
    template <class U>
    TFXRef(const TFXRef<U>& other) : TFXRef(other.Get())
    {
    }
    ~TFXRef()
    {
        if (FObject)
            FObject->Release();
    }
    TFXRef& operator=(TFXRef other) noexcept
    {
        std::swap(FObject, other.FObject);
        return *this;
    }

    T* Get() const { return FObject; }
    T* operator->() const { return FObject; }
    T& operator*() const { return *FObject; }
    explicit operator bool() const { return FObject != nullptr; }
    bool operator==(const TFXRef& other) const = default;

private:
    T* FObject = nullptr;
};

} // namespace framix
