// SPDX-License-Identifier: MIT
// One `object Name: TClass ... end` block of a stored form, with its assignments and children.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "storage/FXFormValue.h"

namespace framix {

// How the block was introduced. `inherited` and `inline` blocks describe changes to an object
// that a parent form or a frame already creates; the syntax layer only keeps the flag.
enum class TFXFormObjectKind : std::uint8_t { Object, Inherited, Inline };

// The syntax tree of a stored form: plain data, so the layer that creates components can walk
// it freely and a saver can build one in code. Properties keep their written order; children
// follow the properties (a reader accepts them interleaved, the writer writes properties
// first). Names compare case-insensitively in the lookups, as in the form itself.
struct TFXFormObject {
    TFXFormObjectKind Kind = TFXFormObjectKind::Object;
    std::string Name;      // may be empty: `object TFXGraph`
    std::string ClassName; // "TFXGaussianBlur"
    int Index = -1;        // the optional creation order `[n]` after the class name; -1 if absent
    std::vector<TFXFormProperty> Properties;
    std::vector<TFXFormObject> Children;
    TFXFormPosition Position; // of the introducing keyword

    // Appends `path = value` and returns the new assignment.
    TFXFormProperty& Add(std::string path, TFXFormValue value);
    // Appends a child object and returns it.
    TFXFormObject& AddChild(std::string name, std::string className);

    // First assignment to `path`, or null.
    const TFXFormProperty* FindProperty(std::string_view path) const;
    // Direct child called `name`, or null.
    const TFXFormObject* FindChild(std::string_view name) const;
    // Walks a dotted name below this object: "Jaehne1" or "Sub.Jaehne1". Returns null when a
    // step is missing. A reference such as Graph1.Jaehne1.OutputPin is split by the caller
    // (root name, object path, pin property).
    const TFXFormObject* FindDescendant(std::string_view dottedName) const;

    friend bool operator==(const TFXFormObject& a, const TFXFormObject& b);
};

} // namespace framix
