// SPDX-License-Identifier: MIT
// Writes a live graph as its normalised stored form.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "framework/KTComponent.h"
#include "storage/FXFormObject.h"

namespace framix {

// The normal form of a component tree, which loads back to the same graph:
//  - one object per component, children in creation order; a component without a name gets
//    the first free "<class without T><n>" (FXGaussianBlur1), as a designer would name it;
//  - per object, its table in order (ancestors first): values that differ from their default
//    (always for pfNoDefault; never for pfLegacy or read-only ones), groups as dotted paths
//    followed by the group's own extra properties, collections that hold items; then the
//    object's extra properties (DefineProperties); then every pin link, in table order and
//    written at both ends;
//  - a link to a pin outside the saved tree is left out (the form could not name it).
class TFXGraphSaver {
public:
    TFXFormObject Save(const TKTComponent& root);

private:
    TFXFormObject SaveObject(const TKTComponent& component);
    // The values of `object` (a component, a group or a collection item) with `prefix` before
    // each path, then its extra properties.
    void SaveValues(std::vector<TFXFormProperty>& props, TKTPersistent& object,
                    const std::string& prefix);
    void SavePins(std::vector<TFXFormProperty>& props, const TFXPropInfo& info,
                  TKTComponent& component);
    void AssignNames(const TKTComponent& component);
    // "Graph1.Blur1.OutputPin", or empty when the pin's owner is not in the saved tree.
    std::string Reference(const TPXBasicPin& pin) const;
    const std::string& NameOf(const TKTComponent& component) const;

    const TKTComponent* FRoot = nullptr;
    std::map<const TKTComponent*, std::string> FNames;
};

TFXFormObject FXSaveGraph(const TKTComponent& root);
// The normalised text of the graph.
std::string FXSaveGraphText(const TKTComponent& root);
// Writes the normalised text to a file, replacing it; errors name the file.
void FXSaveGraphFile(const TKTComponent& root, const std::filesystem::path& path);

} // namespace framix
