// SPDX-License-Identifier: MIT
// From a live graph to its normalised stored-form tree.
#include "storage/FXGraphSaver.h"

#include <charconv>

#include "framework/FXPins.h"
#include "framework/KTCollection.h"
#include "framework/properties/FXPropertyAccess.h"
#include "storage/FXFormFile.h"
#include "storage/FXFormFiler.h"

namespace framix {

namespace {

// A single-precision value is written with the fewest digits that read back to the same
// float (0.1, not 0.100000001490116119): the stored double then converts back exactly.
double ShortestFloat(double value)
{
    char buffer[64];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, float(value));
    double shortest = value;
    std::from_chars(buffer, end, shortest);
    return shortest;
}

TFXFormValue FormValue(const TFXPropInfo& info, const TFXValue& value)
{
    switch (info.Kind) {
    case TFXPropKind::Bool:
        return TFXFormValue::Boolean(std::get<bool>(value));
    case TFXPropKind::Int:
    case TFXPropKind::Colour:
        return TFXFormValue::Integer(std::get<std::int64_t>(value));
    case TFXPropKind::Enum: {
        const std::int64_t ordinal = std::get<std::int64_t>(value);
        if (ordinal >= 0 && std::size_t(ordinal) < info.EnumNames.size())
            return TFXFormValue::Identifier(std::string(info.EnumNames[std::size_t(ordinal)]));
        return TFXFormValue::Integer(ordinal);
    }
    case TFXPropKind::Float:
        return TFXFormValue::Float(ShortestFloat(std::get<double>(value)));
    case TFXPropKind::Double:
        return TFXFormValue::Float(std::get<double>(value));
    case TFXPropKind::String:
        return TFXFormValue::String(std::get<std::string>(value));
    default:
        throw EFXError("property '" + std::string(info.Name) + "' has no stored value");
    }
}

void AddProperty(std::vector<TFXFormProperty>& props, std::string path, TFXFormValue value)
{
    props.push_back({std::move(path), std::move(value), {}});
}

} // namespace

TFXFormObject TFXGraphSaver::Save(const TKTComponent& root)
{
    FRoot = &root;
    FNames.clear();
    FNames[&root] = root.GetName();
    AssignNames(root);
    TFXFormObject form = SaveObject(root);
    FRoot = nullptr;
    return form;
}

void TFXGraphSaver::AssignNames(const TKTComponent& component)
{
    auto taken = [&](const std::string& name) {
        for (const TKTComponent* c : component.GetComponents()) {
            auto it = FNames.find(c);
            if (FXFormSameName(it != FNames.end() ? it->second : c->GetName(), name))
                return true;
        }
        return false;
    };
    for (const TKTComponent* child : component.GetComponents()) {
        std::string name = child->GetName();
        if (name.empty()) {
            std::string_view base = child->GetClassInfo().Name();
            if (base.size() > 1 && base[0] == 'T')
                base.remove_prefix(1);
            for (int n = 1; name.empty() || taken(name); ++n)
                name = std::string(base) + std::to_string(n);
        }
        FNames[child] = name;
    }
    for (const TKTComponent* child : component.GetComponents())
        AssignNames(*child);
}

const std::string& TFXGraphSaver::NameOf(const TKTComponent& component) const
{
    return FNames.at(&component);
}

std::string TFXGraphSaver::Reference(const TPXBasicPin& pin) const
{
    std::string path = pin.GetName();
    const TKTComponent* c = &pin.GetOwner();
    for (; c && c != FRoot; c = c->GetOwner()) {
        const auto it = FNames.find(c);
        if (it == FNames.end())
            return {};
        path = it->second + "." + path;
    }
    if (!c)
        return {};
    return NameOf(*FRoot).empty() ? path : NameOf(*FRoot) + "." + path;
}

TFXFormObject TFXGraphSaver::SaveObject(const TKTComponent& component)
{
    TFXFormObject out;
    out.Name = NameOf(component);
    out.ClassName = component.GetClassInfo().Name();
    auto& mutableComponent =
        const_cast<TKTComponent&>(component); // groups are reached by reference
    SaveValues(out.Properties, mutableComponent, "");
    // The links come last, as a reader of the form expects the wiring after the settings.
    mutableComponent.GetClassInfo().ForEach([&](const TFXPropInfo& p) {
        if (p.Kind == TFXPropKind::Pin)
            SavePins(out.Properties, p, mutableComponent);
    });
    for (const TKTComponent* child : component.GetComponents())
        out.Children.push_back(SaveObject(*child));
    return out;
}

void TFXGraphSaver::SaveValues(std::vector<TFXFormProperty>& props, TKTPersistent& object,
                               const std::string& prefix)
{
    object.GetClassInfo().ForEach([&](const TFXPropInfo& p) {
        const std::string path = prefix + std::string(p.Name);
        if (p.Flags & pfLegacy)
            return;
        switch (p.Kind) {
        case TFXPropKind::Event:
            return;
        case TFXPropKind::Group:
            SaveValues(props, *p.GetObject(object), path + ".");
            return;
        case TFXPropKind::Collection: {
            auto* collection = dynamic_cast<TKTCollection*>(p.GetObject(object));
            if (!collection || collection->Count() == 0)
                return;
            std::vector<TFXFormCollectionItem> items;
            for (int i = 0; i < collection->Count(); ++i) {
                TFXFormCollectionItem item;
                SaveValues(item.Properties, collection->GetItem(i), "");
                items.push_back(std::move(item));
            }
            AddProperty(props, path, TFXFormValue::Collection(std::move(items)));
            return;
        }
        case TFXPropKind::Pin:
            return;
        default:
            break;
        }
        if (!p.HasValue() || !p.IsWritable())
            return;
        const TFXValue value = p.Get(object);
        if (!FXIsDefaultValue(p, value))
            AddProperty(props, path, FormValue(p, value));
    });
    // Extra properties follow the table, as the object registers them.
    TFXFormWriteFiler filer(prefix.empty() ? std::string(object.GetClassInfo().Name())
                                           : prefix.substr(0, prefix.size() - 1));
    object.DefineProperties(filer);
    for (auto& [name, value] : filer.Values())
        AddProperty(props, prefix + name, std::move(value));
}

void TFXGraphSaver::SavePins(std::vector<TFXFormProperty>& props, const TFXPropInfo& info,
                             TKTComponent& component)
{
    auto saveOne = [&](TPXBasicPin& pin, const std::string& path) {
        if (pin.IsSource()) {
            std::vector<TFXFormValue> sinks;
            for (const TPXSinkPin* sink : static_cast<TPXSourcePin&>(pin).GetSinkPins())
                if (std::string ref = Reference(*sink); !ref.empty())
                    sinks.push_back(TFXFormValue::Identifier(std::move(ref)));
            if (!sinks.empty())
                AddProperty(props, path + ".SinkPins", TFXFormValue::List(std::move(sinks)));
        } else if (const TPXSourcePin* source = static_cast<TPXSinkPin&>(pin).GetSourcePin()) {
            if (std::string ref = Reference(*source); !ref.empty())
                AddProperty(props, path + ".SourcePin", TFXFormValue::Identifier(std::move(ref)));
        }
    };
    if (info.GetPin) {
        saveOne(*info.GetPin(component), std::string(info.Name));
        return;
    }
    // A list of inputs is written as one list of sources, `nil` for an unconnected pin; pins
    // that are outputs are written one by one.
    TPXPinListBase& list = *info.GetPinList(component);
    std::vector<TFXFormValue> sources;
    std::size_t used = 0;
    for (int i = 0; i < list.Count(); ++i) {
        TPXBasicPin& pin = list.GetPin(i);
        if (pin.IsSource()) {
            saveOne(pin, pin.GetName());
            continue;
        }
        const TPXSourcePin* source = static_cast<TPXSinkPin&>(pin).GetSourcePin();
        std::string ref = source ? Reference(*source) : std::string();
        sources.push_back(TFXFormValue::Identifier(ref.empty() ? "nil" : ref));
        if (!ref.empty())
            used = sources.size();
    }
    if (used > 0) {
        sources.resize(used);
        AddProperty(props, std::string(info.Name) + ".Pins",
                    TFXFormValue::List(std::move(sources)));
    }
}

TFXFormObject FXSaveGraph(const TKTComponent& root)
{
    return TFXGraphSaver().Save(root);
}

std::string FXSaveGraphText(const TKTComponent& root)
{
    return FXWriteFormText(FXSaveGraph(root));
}

void FXSaveGraphFile(const TKTComponent& root, const std::filesystem::path& path)
{
    FXWriteFormFile(FXSaveGraph(root), path);
}

} // namespace framix
