// SPDX-License-Identifier: MIT
// From a stored-form tree to a wired graph of components.
#include "storage/FXGraphLoader.h"

#include <algorithm>
#include <optional>

#include "framework/KTCollection.h"
#include "framework/properties/FXPropertyAccess.h"
#include "storage/FXFormFile.h"
#include "storage/FXFormFiler.h"

namespace framix {

namespace {

std::string Quote(std::string_view s)
{
    return "'" + std::string(s) + "'";
}

std::vector<std::string_view> Split(std::string_view path)
{
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t dot = path.find('.');
        parts.push_back(path.substr(0, dot));
        if (dot == std::string_view::npos)
            return parts;
        path.remove_prefix(dot + 1);
    }
}

// Table names are exact in C++ but case-insensitive in a stored form: the exact match first
// (the common case, and the one that must win), then any spelling.
const TFXPropInfo* FindProperty(const TFXClassInfo& info, std::string_view name)
{
    if (const TFXPropInfo* exact = info.Find(name))
        return exact;
    const TFXPropInfo* found = nullptr;
    info.ForEach([&](const TFXPropInfo& p) {
        if (!found && FXFormSameName(p.Name, name))
            found = &p;
    });
    return found;
}

TKTComponent* FindChild(const TKTComponent& parent, std::string_view name)
{
    if (TKTComponent* exact = parent.FindComponent(name))
        return exact;
    for (TKTComponent* c : parent.GetComponents())
        if (FXFormSameName(c->GetName(), name))
            return c;
    return nullptr;
}

std::string Suggestion(std::string_view name, const std::vector<std::string_view>& candidates)
{
    const std::string_view near = FXClosestName(name, candidates);
    return near.empty() ? std::string() : " (did you mean " + Quote(near) + "?)";
}

// The names in a class's table, or only those of one kind.
std::vector<std::string_view> PropertyNames(const TFXClassInfo& info,
                                            std::optional<TFXPropKind> only = {})
{
    std::vector<std::string_view> names;
    info.ForEach([&](const TFXPropInfo& p) {
        if (!only || p.Kind == *only)
            names.push_back(p.Name);
    });
    return names;
}

bool IsNil(const TFXFormValue& value)
{
    return value.Kind() == TFXFormValueKind::Identifier &&
           FXFormSameName(value.AsIdentifier(), "nil");
}

// What a property of each kind expects, for "expects ..., found ..." messages.
std::string Expected(const TFXPropInfo& info)
{
    switch (info.Kind) {
    case TFXPropKind::Bool:
        return "True or False";
    case TFXPropKind::Int:
        return "an integer";
    case TFXPropKind::Colour:
        return "a colour (an integer, $00BBGGRR)";
    case TFXPropKind::Float:
    case TFXPropKind::Double:
        return "a number";
    case TFXPropKind::String:
        return "a string";
    case TFXPropKind::Collection:
        return "a collection < item ... end >";
    case TFXPropKind::Enum: {
        std::string names;
        for (std::size_t i = 0; i < info.EnumNames.size() && i < 8; ++i)
            names += (i ? ", " : "") + std::string(info.EnumNames[i]);
        return "one of " + names + (info.EnumNames.size() > 8 ? ", ..." : "");
    }
    default:
        return "a value";
    }
}

} // namespace

// ---------------------------------------------------------------- pin statements

enum class TFXPinMember : std::uint8_t { SourcePin, SinkPins, Pins };

struct TFXGraphLoader::TPinStatement {
    TKTComponent* Component;
    const TFXPropInfo* Info; // the Pin entry
    std::string PinPath;     // "InputPin", "InputPins" or "InputPins._Pin1"
    std::string ListPin;     // "_Pin1" when the path names one pin of a list
    TFXPinMember Member;
    const TFXFormValue* Value;
    TFXFormPosition Position;
};

struct TFXGraphLoader::TLink {
    TPXSourcePin* Source;
    TPXSinkPin* Sink;
    TFXFormPosition Position;
};

TFXGraphLoader::TFXGraphLoader(std::string fileName, const TFXPalette& palette)
    : FFileName(std::move(fileName)), FPalette(palette)
{
}

TFXGraphLoader::~TFXGraphLoader() = default;

void TFXGraphLoader::Fail(TFXFormPosition position, const std::string& reason) const
{
    throw EFXFormError(FFileName, position, reason);
}

std::unique_ptr<TFXGraph> TFXGraphLoader::Load(const TFXFormObject& root)
{
    FPinStatements.clear();
    FPositions.clear();
    auto graph = std::make_unique<TFXGraph>();
    FRoot = graph.get();
    if (!root.Name.empty()) {
        try {
            graph->SetName(root.Name);
        } catch (const EFXError& e) {
            Fail(root.Position, e.what());
        }
    }
    FPositions[graph.get()] = root.Position;
    graph->CreateStart(true);
    for (const TFXFormProperty& p : root.Properties)
        Assign(*graph, *graph, p);
    LoadChildren(*graph, root);
    WirePins();
    CallLoaded(*graph);
    FRoot = nullptr;
    return graph;
}

void TFXGraphLoader::LoadChildren(TKTComponent& parent, const TFXFormObject& form)
{
    for (const TFXFormObject& child : form.Children) {
        TKTComponent& component = CreateChild(parent, child);
        for (const TFXFormProperty& p : child.Properties)
            Assign(component, component, p);
        LoadChildren(component, child);
    }
}

TKTComponent& TFXGraphLoader::CreateChild(TKTComponent& parent, const TFXFormObject& form)
{
    TKTComponent* component = nullptr;
    if (form.Kind == TFXFormObjectKind::Object) {
        const TFXPaletteEntry* entry = FPalette.Find(form.ClassName);
        for (const TFXPaletteEntry& e : FPalette.Entries())
            if (!entry && FXFormSameName(e.ClassName, form.ClassName))
                entry = &e;
        if (!entry) {
            try {
                FPalette.Get(form.ClassName); // composes the message with the closest name
            } catch (const EFXError& e) {
                Fail(form.Position, e.what());
            }
        }
        if (!form.Name.empty() && FindChild(parent, form.Name))
            Fail(form.Position,
                 parent.GetPathName() + " already has a component named " + Quote(form.Name));
        try {
            component = entry->Create(&parent);
        } catch (const EFXError& e) {
            Fail(form.Position, "cannot create " + form.ClassName + ": " + e.what());
        }
    } else {
        // `inherited` and `inline` change a component its owner already made.
        component = FindChild(parent, form.Name);
        if (!component)
            Fail(form.Position, parent.GetPathName() + " has no component " + Quote(form.Name) +
                                    " for this inherited block to change");
        if (!FXFormSameName(component->GetClassInfo().Name(), form.ClassName))
            Fail(form.Position, component->GetPathName() + " is a " +
                                    std::string(component->GetClassInfo().Name()) + ", not a " +
                                    form.ClassName);
    }
    if (!form.Name.empty()) {
        try {
            component->SetName(form.Name);
        } catch (const EFXError& e) {
            Fail(form.Position, e.what());
        }
    }
    FPositions[component] = form.Position;
    component->CreateStart(true);
    return *component;
}

// ---------------------------------------------------------------- properties

void TFXGraphLoader::Assign(TKTPersistent& object, TKTComponent& component,
                            const TFXFormProperty& property)
{
    const std::string& path = property.Path;
    const std::string where = component.GetPathName() + ": ";
    const std::vector<std::string_view> steps = Split(path);
    TKTPersistent* target = &object;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const bool last = i + 1 == steps.size();
        const TFXClassInfo& info = target->GetClassInfo();
        const TFXPropInfo* prop = FindProperty(info, steps[i]);
        if (!prop) {
            std::vector<std::string> defined;
            if (last && AssignExtra(*target, component, steps[i], path, property.Value, defined))
                return;
            std::vector<std::string_view> candidates = PropertyNames(info);
            candidates.insert(candidates.end(), defined.begin(), defined.end());
            Fail(property.Position, where + "Unknown property " + Quote(path) + ": " +
                                        std::string(info.Name()) + " has no property " +
                                        Quote(steps[i]) + Suggestion(steps[i], candidates));
        }
        if (prop->Kind == TFXPropKind::Group) {
            if (last)
                Fail(property.Position, where + Quote(path) +
                                            " is a property group: assign its values one by one (" +
                                            path + ".Name = value)");
            target = prop->GetObject(*target);
            continue;
        }
        if (prop->Kind == TFXPropKind::Pin) {
            // InputPin.SourcePin, OutputPin.SinkPins, InputPins.Pins, InputPins._Pin1.SourcePin
            const std::size_t rest = steps.size() - i - 1;
            TPinStatement st{&component,
                             prop,
                             std::string(prop->Name),
                             {},
                             TFXPinMember::Pins,
                             &property.Value,
                             property.Position};
            std::string_view member;
            if (rest == 1) {
                member = steps[i + 1];
            } else if (rest == 2 && prop->GetPinList) {
                st.ListPin = steps[i + 1];
                st.PinPath += "." + st.ListPin;
                member = steps[i + 2];
            }
            if (FXFormSameName(member, "SourcePin") && (!prop->GetPinList || !st.ListPin.empty()))
                st.Member = TFXPinMember::SourcePin;
            else if (FXFormSameName(member, "SinkPins") &&
                     (!prop->GetPinList || !st.ListPin.empty()))
                st.Member = TFXPinMember::SinkPins;
            else if (FXFormSameName(member, "Pins") && prop->GetPinList && st.ListPin.empty())
                st.Member = TFXPinMember::Pins;
            else
                Fail(property.Position,
                     where + "Unknown property " + Quote(path) + ": write a pin's links as " +
                         (prop->GetPinList ? std::string(prop->Name) + ".Pins = ( ... )"
                                           : std::string(prop->Name) + ".SourcePin = ... or " +
                                                 std::string(prop->Name) + ".SinkPins = ( ... )"));
            FPinStatements.push_back(std::move(st));
            return;
        }
        if (!last)
            Fail(property.Position, where + "Unknown property " + Quote(path) + ": " +
                                        Quote(steps[i]) + " is not a property group");
        if (prop->Kind == TFXPropKind::Collection)
            AssignCollection(*target, component, *prop, path, property.Value);
        else
            AssignValue(*target, component, *prop, path, property.Value);
    }
}

void TFXGraphLoader::AssignValue(TKTPersistent& object, TKTComponent& component,
                                 const TFXPropInfo& info, const std::string& path,
                                 const TFXFormValue& value)
{
    const std::string where = component.GetPathName() + ": ";
    if (info.Kind == TFXPropKind::Event)
        Fail(value.Position(),
             where + Quote(path) + " is an event: events are set in code and never stored");
    if (!info.HasValue() || !info.IsWritable())
        Fail(value.Position(), where + "property " + Quote(path) + " is read-only");
    auto wrongKind = [&]() {
        Fail(value.Position(), where + "property " + Quote(path) + " expects " + Expected(info) +
                                   ", found " + value.Describe());
    };
    TFXValue v;
    try {
        switch (info.Kind) {
        case TFXPropKind::Bool:
            if (value.Kind() != TFXFormValueKind::Identifier ||
                (!FXFormSameName(value.AsIdentifier(), "True") &&
                 !FXFormSameName(value.AsIdentifier(), "False")))
                wrongKind();
            v = value.AsBoolean();
            break;
        case TFXPropKind::Int:
        case TFXPropKind::Colour:
            if (value.Kind() != TFXFormValueKind::Integer)
                wrongKind();
            v = value.AsInteger();
            break;
        case TFXPropKind::Float:
        case TFXPropKind::Double:
            if (value.Kind() != TFXFormValueKind::Integer &&
                value.Kind() != TFXFormValueKind::Float)
                wrongKind();
            v = value.AsNumber();
            break;
        case TFXPropKind::Enum:
            if (value.Kind() == TFXFormValueKind::Identifier)
                v = FXParsePropertyText(info, value.AsIdentifier());
            else if (value.Kind() == TFXFormValueKind::Integer)
                v = FXParsePropertyText(info, std::to_string(value.AsInteger()));
            else
                wrongKind();
            break;
        case TFXPropKind::String:
            if (value.Kind() != TFXFormValueKind::String)
                wrongKind();
            v = value.AsString();
            break;
        default:
            wrongKind();
        }
        FXSetPropertyValue(object, info, v);
    } catch (const EFXFormError&) {
        throw;
    } catch (const EFXError& e) {
        Fail(value.Position(), where + Quote(path) + ": " + e.what());
    }
}

void TFXGraphLoader::AssignCollection(TKTPersistent& object, TKTComponent& component,
                                      const TFXPropInfo& info, const std::string& path,
                                      const TFXFormValue& value)
{
    if (value.Kind() != TFXFormValueKind::Collection)
        Fail(value.Position(), component.GetPathName() + ": property " + Quote(path) + " expects " +
                                   Expected(info) + ", found " + value.Describe());
    auto* collection = dynamic_cast<TKTCollection*>(info.GetObject(object));
    if (!collection)
        Fail(value.Position(),
             component.GetPathName() + ": " + Quote(path) + " is not a collection");
    // A stored collection replaces the items, as a designer's would.
    collection->Clear();
    for (const TFXFormCollectionItem& formItem : value.AsCollection()) {
        TKTCollectionItem& item = collection->Add();
        for (const TFXFormProperty& p : formItem.Properties)
            Assign(item, component, p);
    }
}

bool TFXGraphLoader::AssignExtra(TKTPersistent& object, TKTComponent& component,
                                 std::string_view name, const std::string& path,
                                 const TFXFormValue& value, std::vector<std::string>& definedNames)
{
    TFXFormReadFiler filer(name, value, FFileName, component.GetPathName() + ": " + path);
    object.DefineProperties(filer);
    definedNames = filer.Names();
    return filer.Found();
}

// ---------------------------------------------------------------- pins

void TFXGraphLoader::WirePins()
{
    std::vector<TLink> links;
    for (const TPinStatement& st : FPinStatements)
        ResolveStatement(st, links);

    // A link may be written at both ends; a sink pin takes one source only.
    std::vector<TLink> unique;
    std::map<TPXSinkPin*, const TLink*> bySink;
    for (const TLink& link : links) {
        auto [it, added] = bySink.emplace(link.Sink, &link);
        if (added) {
            unique.push_back(link);
        } else if (it->second->Source != link.Source) {
            Fail(link.Position, link.Sink->GetPathName() +
                                    " is fed by two sources: " + it->second->Source->GetPathName() +
                                    " (line " + std::to_string(it->second->Position.Line) +
                                    ") and " + link.Source->GetPathName());
        }
    }
    CheckForCycles(unique);
    for (const TLink& link : unique) {
        try {
            link.Sink->SetSourcePin(link.Source);
        } catch (const EFXError& e) {
            Fail(link.Position, e.what());
        }
    }
}

void TFXGraphLoader::ResolveStatement(const TPinStatement& st, std::vector<TLink>& links)
{
    const std::string context = st.Component->GetPathName() + "." + st.PinPath;
    TPXBasicPin* pin = st.Info->GetPin ? st.Info->GetPin(*st.Component) : nullptr;
    TPXPinListBase* list = st.Info->GetPinList ? st.Info->GetPinList(*st.Component) : nullptr;
    if (list && !st.ListPin.empty()) {
        for (int i = 0; i < list->Count() && !pin; ++i)
            if (FXFormSameName(list->GetPin(i).GetName(), list->GetName() + "." + st.ListPin))
                pin = &list->GetPin(i);
        if (!pin)
            Fail(st.Position, context + ": the pin list has no pin " + Quote(st.ListPin) +
                                  " (it has " + std::to_string(list->Count()) + ")");
    }
    const TFXFormValue& value = *st.Value;
    auto sourceOf = [&](const TFXFormValue& ref) -> TPXSourcePin* {
        TPXBasicPin& p = ResolvePinReference(ref, context);
        if (!p.IsSource())
            Fail(ref.Position(),
                 context + ": " + p.GetPathName() + " is an input; a source must be an output pin");
        return static_cast<TPXSourcePin*>(&p);
    };
    auto items = [&]() -> std::vector<const TFXFormValue*> {
        std::vector<const TFXFormValue*> out;
        if (value.Kind() == TFXFormValueKind::List) {
            for (const TFXFormValue& item : value.AsList())
                out.push_back(&item);
        } else if (value.Kind() == TFXFormValueKind::Identifier) {
            out.push_back(&value); // a single link may be written without parentheses
        } else {
            Fail(value.Position(),
                 context + ": expected a list of pins ( Graph1.A.InputPin ... ), found " +
                     value.Describe());
        }
        return out;
    };

    switch (st.Member) {
    case TFXPinMember::SourcePin: {
        if (pin->IsSource())
            Fail(st.Position, context + " is an output: write its links as " + st.PinPath +
                                  ".SinkPins = ( ... )");
        if (IsNil(value))
            return;
        links.push_back({sourceOf(value), static_cast<TPXSinkPin*>(pin), value.Position()});
        return;
    }
    case TFXPinMember::SinkPins: {
        if (!pin->IsSource())
            Fail(st.Position,
                 context + " is an input: write its link as " + st.PinPath + ".SourcePin = ...");
        for (const TFXFormValue* ref : items()) {
            TPXBasicPin& sink = ResolvePinReference(*ref, context);
            if (sink.IsSource())
                Fail(ref->Position(), context + ": " + sink.GetPathName() +
                                          " is an output; a sink must be an input pin");
            links.push_back({static_cast<TPXSourcePin*>(pin), static_cast<TPXSinkPin*>(&sink),
                             ref->Position()});
        }
        return;
    }
    case TFXPinMember::Pins: {
        const std::vector<const TFXFormValue*> refs = items();
        if (int(refs.size()) > list->Count())
            Fail(value.Position(), context + " has " + std::to_string(list->Count()) +
                                       " pins, the form names " + std::to_string(refs.size()) +
                                       " sources");
        for (std::size_t i = 0; i < refs.size(); ++i) {
            if (IsNil(*refs[i]))
                continue;
            TPXBasicPin& target = list->GetPin(int(i));
            if (target.IsSource())
                Fail(refs[i]->Position(), context + ": " + target.GetPathName() +
                                              " is an output: write its links as " +
                                              target.GetName() + ".SinkPins");
            links.push_back(
                {sourceOf(*refs[i]), static_cast<TPXSinkPin*>(&target), refs[i]->Position()});
        }
        return;
    }
    }
}

TPXBasicPin& TFXGraphLoader::ResolvePinReference(const TFXFormValue& reference,
                                                 const std::string& context)
{
    if (reference.Kind() != TFXFormValueKind::Identifier)
        Fail(reference.Position(), context + ": expected a pin such as " +
                                       (FRoot->GetName().empty() ? "" : FRoot->GetName() + ".") +
                                       "Player1.OutputPin, found " + reference.Describe());
    const std::string& text = reference.AsIdentifier();
    const std::vector<std::string_view> steps = Split(text);
    std::size_t i = 0;
    if (!FRoot->GetName().empty() && steps.size() > 1 && FXFormSameName(steps[0], FRoot->GetName()))
        i = 1;
    TKTComponent* owner = FRoot;
    while (i < steps.size()) {
        TKTComponent* child = FindChild(*owner, steps[i]);
        if (!child)
            break;
        owner = child;
        ++i;
    }
    const std::string at = context + ": pin " + Quote(text) + ": ";
    if (owner == FRoot) {
        std::vector<std::string_view> names;
        for (TKTComponent* c : FRoot->GetComponents())
            names.push_back(c->GetName());
        Fail(reference.Position(), at + "there is no component " + Quote(steps[i]) + " in " +
                                       FRoot->GetPathName() + Suggestion(steps[i], names));
    }
    if (i == steps.size())
        Fail(reference.Position(), at + "names a component, not one of its pins");
    const TFXPropInfo* info = FindProperty(owner->GetClassInfo(), steps[i]);
    if (!info || info->Kind != TFXPropKind::Pin) {
        const auto pins = PropertyNames(owner->GetClassInfo(), TFXPropKind::Pin);
        const auto children = [&] {
            std::vector<std::string_view> names(pins);
            for (TKTComponent* c : owner->GetComponents())
                names.push_back(c->GetName());
            return names;
        }();
        Fail(reference.Position(), at + owner->GetPathName() + " has no pin " + Quote(steps[i]) +
                                       Suggestion(steps[i], children));
    }
    if (info->GetPin) {
        if (i + 1 != steps.size())
            Fail(reference.Position(), at + std::string(info->Name) + " is a pin, not a pin list");
        return *info->GetPin(*owner);
    }
    TPXPinListBase& list = *info->GetPinList(*owner);
    if (i + 2 != steps.size())
        Fail(reference.Position(), at + "name one pin of the list " + std::string(info->Name) +
                                       " (" + std::string(info->Name) + "._Pin0 ...)");
    for (int p = 0; p < list.Count(); ++p)
        if (FXFormSameName(list.GetPin(p).GetName(),
                           list.GetName() + "." + std::string(steps[i + 1])))
            return list.GetPin(p);
    Fail(reference.Position(), at + owner->GetPathName() + "." + list.GetName() + " has no pin " +
                                   Quote(steps[i + 1]) + " (it has " +
                                   std::to_string(list.Count()) + ")");
}

void TFXGraphLoader::CheckForCycles(const std::vector<TLink>& links)
{
    // Frames travel by direct calls, so a cycle would recurse for ever: find one, depth first
    // without recursion (a chain may be thousands of components long).
    std::map<const TKTComponent*, std::vector<const TLink*>> next;
    for (const TLink& link : links)
        next[&link.Source->GetOwner()].push_back(&link);
    enum TState : std::uint8_t { Unseen, Open, Done };
    std::map<const TKTComponent*, TState> state;
    struct TFrame {
        const TKTComponent* Component;
        std::size_t Edge;
    };
    // Starts in creation order (depth first through the tree), not by address, so the cycle
    // reported, and the line named, is the same from run to run.
    std::vector<const TKTComponent*> order;
    std::vector<const TKTComponent*> pending{FRoot};
    while (!pending.empty()) {
        const TKTComponent* c = pending.back();
        pending.pop_back();
        order.push_back(c);
        const auto& children = c->GetComponents();
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
    for (const auto& [source, unused] : next)  // any owner outside the tree, last
        order.push_back(source);
    for (const TKTComponent* start : order) {
        if (!next.count(start) || state[start] != Unseen)
            continue;
        std::vector<TFrame> stack{{start, 0}};
        state[start] = Open;
        while (!stack.empty()) {
            TFrame& top = stack.back();
            const auto it = next.find(top.Component);
            if (it == next.end() || top.Edge >= it->second.size()) {
                state[top.Component] = Done;
                stack.pop_back();
                continue;
            }
            const TLink* link = it->second[top.Edge++];
            const TKTComponent* to = &link->Sink->GetOwner();
            if (state[to] == Open) {
                std::string path;
                auto from = std::find_if(stack.begin(), stack.end(),
                                         [&](const TFrame& f) { return f.Component == to; });
                for (; from != stack.end(); ++from)
                    path += from->Component->GetPathName() + " -> ";
                Fail(link->Position, "the pin links form a cycle: " + path + to->GetPathName() +
                                         " (a frame would travel round it for ever)");
            }
            if (state[to] == Unseen) {
                state[to] = Open;
                stack.push_back({to, 0});
            }
        }
    }
}

void TFXGraphLoader::CallLoaded(TKTComponent& component)
{
    try {
        component.Loaded();
    } catch (const EFXFormError&) {
        throw;
    } catch (const EFXError& e) {
        Fail(FPositions[&component], component.GetPathName() + ": " + e.what());
    }
    for (TKTComponent* child : component.GetComponents())
        CallLoaded(*child);
}

// ---------------------------------------------------------------- entry points

std::unique_ptr<TFXGraph> FXLoadGraph(const TFXFormObject& form, const std::string& fileName,
                                      const TFXPalette& palette)
{
    return TFXGraphLoader(fileName, palette).Load(form);
}

std::unique_ptr<TFXGraph> FXLoadGraphText(std::string_view text, const std::string& fileName,
                                          const TFXPalette& palette)
{
    return FXLoadGraph(FXReadFormText(text, fileName), fileName, palette);
}

std::unique_ptr<TFXGraph> FXLoadGraphFile(const std::filesystem::path& path,
                                          const TFXPalette& palette)
{
    return FXLoadGraph(FXReadFormFile(path), path.string(), palette);
}

} // namespace framix
