// SPDX-License-Identifier: MIT
// The component root: owner, name, owned children and the component lock.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/FXFrameStats.h"
#include "framework/KTPersistent.h"

namespace framix {

// Components are created with an owner, which destroys them with itself (children in reverse
// order of creation). A component destroyed earlier leaves its owner's list.
class TKTComponent : public TKTPersistent {
public:
    explicit TKTComponent(TKTComponent* owner);
    ~TKTComponent() override;

    static const TFXClassInfo& ClassInfo();
    const TFXClassInfo& GetClassInfo() const override { return ClassInfo(); }

    TKTComponent* GetOwner() const { return FOwner; }
    const std::string& GetName() const { return FName; }
    // An identifier (letters, digits, underscore; not starting with a digit), unique among the
    // owner's components; throws EFXError otherwise.
    void SetName(std::string_view name);

    const std::vector<TKTComponent*>& GetComponents() const { return FComponents; }
    TKTComponent* FindComponent(std::string_view name) const;
    // "Graph1.Blur1" style name from the root owner down to this component.
    std::string GetPathName() const;

    // Called once the stored form has set every property and wired every pin.
    virtual void Loaded() {}
    // Called on every owned component (depth first) before any of them is destroyed, while the
    // whole tree is still intact: workers finish here. Call it before deleting a component
    // that has no owner while it may still be running.
    virtual void BeforeDestruction();
    // General component hooks, called around construction by the loader and the palette.
    virtual void CreateStart(bool loading) {}
    virtual void NotifyProp() {}

    // Published properties by path ("Kernel.Width"), as text. The text setter rejects values of
    // the wrong kind and values outside the declared bounds with EFXError; the C++ setters clamp.
    void SetPropertyByPath(std::string_view path, std::string_view text);
    std::string GetPropertyByPath(std::string_view path) const;

    // Frames in and out and processing time, counted while FXFrameStatsEnabled() (the pins,
    // the threaded base and the graph's pump measure them; `framix run --stats` prints them).
    TFXFrameStats& GetFrameStats() const { return FFrameStats; }

private:
    mutable TFXFrameStats FFrameStats;
    TKTLock FOwnLock;
    TKTComponent* FOwner;
    std::string FName;
    std::vector<TKTComponent*> FComponents;
};

} // namespace framix
