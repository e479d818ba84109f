// SPDX-License-Identifier: MIT
// Creates a live graph from a stored form: components, property values, pin links.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/FXGraph.h"
#include "framework/FXPins.h"
#include "framework/properties/FXPalette.h"
#include "storage/FXFormObject.h"
#include "storage/FXFormReader.h"

namespace framix {

// Loading runs in four steps, and nothing of the graph is kept when any of them fails:
//  1. the root object becomes a TFXGraph (whatever its class name says), every nested object a
//     component of its class from the palette, owned by the object it is written in;
//  2. each assignment is applied as it comes: through the class's property table (groups by
//     dotted path, collections item by item), or, for a name the table lacks, through the
//     DefineProperties hook of the object or group it names;
//  3. after the whole form, the pin links written at either end are resolved (so references may
//     point forward), checked (a pin fed twice, a cycle) and connected;
//  4. Loaded() is called on every component, parents before children, in form order.
// Every error is an EFXFormError with the file name and the line and column of the text at
// fault, and its reason names the component ("Graph1.Blur1: ...").
class TFXGraphLoader {
public:
    explicit TFXGraphLoader(std::string fileName, const TFXPalette& palette = TFXPalette::Global());
    ~TFXGraphLoader();

    std::unique_ptr<TFXGraph> Load(const TFXFormObject& root);

private:
    struct TPinStatement;
    struct TLink;

    void LoadChildren(TKTComponent& parent, const TFXFormObject& form);
    TKTComponent& CreateChild(TKTComponent& parent, const TFXFormObject& form);
    void Assign(TKTPersistent& object, TKTComponent& component, const TFXFormProperty& property);
    void AssignValue(TKTPersistent& object, TKTComponent& component, const TFXPropInfo& info,
                     const std::string& path, const TFXFormValue& value);
    void AssignCollection(TKTPersistent& object, TKTComponent& component, const TFXPropInfo& info,
                          const std::string& path, const TFXFormValue& value);
    bool AssignExtra(TKTPersistent& object, TKTComponent& component, std::string_view name,
                     const std::string& path, const TFXFormValue& value,
                     std::vector<std::string>& definedNames);
    void WirePins();
    void ResolveStatement(const TPinStatement& statement, std::vector<TLink>& links);
    TPXBasicPin& ResolvePinReference(const TFXFormValue& reference, const std::string& context);
    void CheckForCycles(const std::vector<TLink>& links);
    void CallLoaded(TKTComponent& component);
    [[noreturn]] void Fail(TFXFormPosition position, const std::string& reason) const;

    std::string FFileName;
    const TFXPalette& FPalette;
    TFXGraph* FRoot = nullptr;
    std::vector<TPinStatement> FPinStatements;
    std::map<const TKTComponent*, TFXFormPosition> FPositions;
};

// Loads a graph from a parsed form; `fileName` labels error messages.
std::unique_ptr<TFXGraph> FXLoadGraph(const TFXFormObject& form,
                                      const std::string& fileName = "<form>",
                                      const TFXPalette& palette = TFXPalette::Global());
// Parses and loads form text.
std::unique_ptr<TFXGraph> FXLoadGraphText(std::string_view text,
                                          const std::string& fileName = "<form>",
                                          const TFXPalette& palette = TFXPalette::Global());
// Reads, parses and loads a form file.
std::unique_ptr<TFXGraph> FXLoadGraphFile(const std::filesystem::path& path,
                                          const TFXPalette& palette = TFXPalette::Global());

} // namespace framix
