// SPDX-License-Identifier: MIT
// Generic access to published properties: paths, text values, validation, assignment.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "framework/properties/FXProperty.h"

namespace framix {

class TKTPersistent;

struct TFXPropertyRef {
    TKTPersistent* Object = nullptr;  // the object (or nested group) holding the property
    const TFXPropInfo* Info = nullptr;
};

// Walks "Kernel.Width" through nested groups. Throws EFXError naming the path, the class and
// the closest existing name when a step does not exist.
TFXPropertyRef FXResolvePropertyPath(TKTPersistent& root, std::string_view path);

// Parses text for a property of the entry's kind: integers (also $FF hex), floats, True/False,
// enumeration names (or ordinals), colours (integers, $00BBGGRR) and strings. Throws EFXError
// for text of the wrong kind or a value outside the entry's bounds.
TFXValue FXParsePropertyText(const TFXPropInfo& info, std::string_view text);
// The text FXParsePropertyText reads back to the same value.
std::string FXFormatPropertyValue(const TFXPropInfo& info, const TFXValue& value);

// Checks the value's kind and bounds, then calls the property's setter.
void FXSetPropertyValue(TKTPersistent& object, const TFXPropInfo& info, const TFXValue& value);
bool FXIsDefaultValue(const TFXPropInfo& info, const TFXValue& value);

// Copies every published value from source to target, recursing into groups and collections.
void FXAssignProperties(TKTPersistent& target, const TKTPersistent& source);

// The candidate nearest to `name` by edit distance, or empty when none is close.
std::string_view FXClosestName(std::string_view name, std::span<const std::string_view> candidates);

} // namespace framix
