// SPDX-License-Identifier: MIT
// Recursive-descent parser of the stored-form syntax.
#include "storage/FXFormReader.h"

#include <climits>

namespace framix {

namespace {

bool IsKeyword(const TFXFormToken& token, std::string_view keyword)
{
    return token.Kind == TFXFormTokenKind::Name && FXFormSameName(token.Text, keyword);
}

bool IsObjectKeyword(const TFXFormToken& token)
{
    return IsKeyword(token, "object") || IsKeyword(token, "inherited") ||
           IsKeyword(token, "inline");
}

std::string DescribeToken(const TFXFormToken& token)
{
    switch (token.Kind) {
    case TFXFormTokenKind::EndOfText:
        return "the end of the text";
    case TFXFormTokenKind::Name:
        return "'" + token.Text + "'";
    case TFXFormTokenKind::Integer:
    case TFXFormTokenKind::Float:
        return "number " + token.Text;
    case TFXFormTokenKind::String:
        return "a string";
    case TFXFormTokenKind::Symbol:
        return std::string("'") + token.Symbol + "'";
    }
    return "a token";
}

} // namespace

TFXFormReader::TFXFormReader(std::string_view text, std::string fileName, TFXFormLimits limits)
    : FText(text), FLimits(limits), FFileName(std::move(fileName))
{
}

TFXFormObject TFXFormReader::Read()
{
    if (FText.size() > FLimits.MaxTextBytes)
        throw EFXFormError(FFileName, {},
                           "form is larger than the limit of " +
                               std::to_string(FLimits.MaxTextBytes) + " bytes");
    TFXFormLexer lexer(FText, FFileName, FLimits.MaxValueBytes);
    FLexer = &lexer;
    if (!IsObjectKeyword(lexer.Current()))
        FailHere("expected 'object' at the start of the form, found " +
                 DescribeToken(lexer.Current()));
    TFXFormObject root = ParseObject(1);
    if (lexer.Current().Kind != TFXFormTokenKind::EndOfText)
        FailHere("unexpected " + DescribeToken(lexer.Current()) + " after the final 'end'");
    FLexer = nullptr;
    return root;
}

void TFXFormReader::FailHere(const std::string& reason) const
{
    FLexer->Fail(FLexer->Current().Position, reason);
}

void TFXFormReader::CheckDepth(int depth) const
{
    if (depth > FLimits.MaxDepth)
        FailHere("nesting deeper than the limit of " + std::to_string(FLimits.MaxDepth) +
                 " levels");
}

TFXFormObject TFXFormReader::ParseObject(int depth)
{
    CheckDepth(depth);
    TFXFormLexer& lex = *FLexer;
    TFXFormObject object;
    object.Position = lex.Current().Position;
    const std::string keyword = lex.Current().Text;
    if (IsKeyword(lex.Current(), "inherited"))
        object.Kind = TFXFormObjectKind::Inherited;
    else if (IsKeyword(lex.Current(), "inline"))
        object.Kind = TFXFormObjectKind::Inline;
    lex.Advance();

    auto expectPlainName = [&](const std::string& what) {
        const TFXFormToken& t = lex.Current();
        // `end` here is almost always a forgotten name; refusing it gives the clear message.
        if (t.Kind != TFXFormTokenKind::Name || IsKeyword(t, "end"))
            FailHere("expected " + what + ", found " + DescribeToken(t));
        if (t.Text.find('.') != std::string::npos)
            FailHere(what + " '" + t.Text + "' must not contain '.'");
        std::string name = t.Text;
        lex.Advance();
        return name;
    };
    std::string first = expectPlainName("an object name after '" + keyword + "'");
    if (lex.IsSymbol(':')) {
        lex.Advance();
        object.Name = std::move(first);
        object.ClassName = expectPlainName("a class name after ':'");
    } else {
        object.ClassName = std::move(first); // an unnamed object: `object TFXGraph`
    }
    if (lex.IsSymbol('[')) {
        lex.Advance();
        const TFXFormToken& t = lex.Current();
        if (t.Kind != TFXFormTokenKind::Integer || t.Integer < 0 || t.Integer > INT_MAX)
            FailHere("expected a creation index (0 or more) after '[', found " + DescribeToken(t));
        object.Index = int(t.Integer);
        lex.Advance();
        if (!lex.IsSymbol(']'))
            FailHere("expected ']' after the creation index, found " +
                     DescribeToken(lex.Current()));
        lex.Advance();
    }

    for (;;) {
        const TFXFormToken& t = lex.Current();
        if (IsKeyword(t, "end")) {
            lex.Advance();
            return object;
        }
        if (IsObjectKeyword(t)) {
            object.Children.push_back(ParseObject(depth + 1));
        } else if (t.Kind == TFXFormTokenKind::Name) {
            object.Properties.push_back(ParseProperty(depth));
        } else if (t.Kind == TFXFormTokenKind::EndOfText) {
            FailHere("missing 'end' of object '" +
                     (object.Name.empty() ? object.ClassName : object.Name) + "' begun on line " +
                     std::to_string(object.Position.Line));
        } else {
            FailHere("expected a property name, 'object' or 'end', found " + DescribeToken(t));
        }
    }
}

TFXFormProperty TFXFormReader::ParseProperty(int depth)
{
    TFXFormLexer& lex = *FLexer;
    TFXFormProperty property;
    property.Path = lex.Current().Text;
    property.Position = lex.Current().Position;
    lex.Advance();
    if (!lex.IsSymbol('='))
        FailHere("expected '=' after property name '" + property.Path + "', found " +
                 DescribeToken(lex.Current()));
    lex.Advance();
    property.Value = ParseValue(depth);
    return property;
}

TFXFormValue TFXFormReader::ParseValue(int depth)
{
    TFXFormLexer& lex = *FLexer;
    const TFXFormToken& t = lex.Current();
    const TFXFormPosition at = t.Position;
    TFXFormValue value;
    switch (t.Kind) {
    case TFXFormTokenKind::Integer:
        value = TFXFormValue::Integer(t.Integer);
        lex.Advance();
        break;
    case TFXFormTokenKind::Float:
        value = TFXFormValue::Float(t.Float);
        lex.Advance();
        break;
    case TFXFormTokenKind::Name:
        value = TFXFormValue::Identifier(t.Text);
        lex.Advance();
        break;
    case TFXFormTokenKind::String:
        value = ParseString();
        break;
    case TFXFormTokenKind::Symbol:
        if (t.Symbol == '[') {
            value = ParseSet();
            break;
        }
        if (t.Symbol == '(') {
            value = ParseList(depth + 1);
            break;
        }
        if (t.Symbol == '{') {
            value = TFXFormValue::Binary(lex.ReadBinaryBlock());
            break;
        }
        if (t.Symbol == '<') {
            value = ParseCollection(depth + 1);
            break;
        }
        [[fallthrough]];
    default:
        FailHere("expected a value, found " + DescribeToken(t));
    }
    value.SetPosition(at);
    return value;
}

TFXFormValue TFXFormReader::ParseString()
{
    TFXFormLexer& lex = *FLexer;
    const TFXFormPosition start = lex.Current().Position;
    std::string text = lex.Current().Text;
    lex.Advance();
    while (lex.IsSymbol('+')) { // 'first line ' + 'second line', usually across lines
        lex.Advance();
        if (lex.Current().Kind != TFXFormTokenKind::String)
            FailHere("expected a string after '+', found " + DescribeToken(lex.Current()));
        text += lex.Current().Text;
        if (text.size() > FLimits.MaxValueBytes)
            lex.Fail(start, "value longer than the limit of " +
                                std::to_string(FLimits.MaxValueBytes) + " bytes");
        lex.Advance();
    }
    return TFXFormValue::String(std::move(text));
}

TFXFormValue TFXFormReader::ParseSet()
{
    TFXFormLexer& lex = *FLexer;
    lex.Advance();
    std::vector<std::string> names;
    if (lex.IsSymbol(']')) {
        lex.Advance();
        return TFXFormValue::Set(std::move(names));
    }
    for (;;) {
        const TFXFormToken& t = lex.Current();
        if (t.Kind != TFXFormTokenKind::Name || t.Text.find('.') != std::string::npos)
            FailHere("expected a name in the set, found " + DescribeToken(t));
        names.push_back(t.Text);
        lex.Advance();
        if (lex.IsSymbol(']')) {
            lex.Advance();
            return TFXFormValue::Set(std::move(names));
        }
        if (!lex.IsSymbol(','))
            FailHere("expected ',' or ']' in the set, found " + DescribeToken(lex.Current()));
        lex.Advance();
    }
}

TFXFormValue TFXFormReader::ParseList(int depth)
{
    CheckDepth(depth);
    TFXFormLexer& lex = *FLexer;
    const TFXFormPosition open = lex.Current().Position;
    lex.Advance();
    std::vector<TFXFormValue> items;
    while (!lex.IsSymbol(')')) {
        if (lex.Current().Kind == TFXFormTokenKind::EndOfText)
            lex.Fail(open, "unterminated list (missing ')')");
        items.push_back(ParseValue(depth));
    }
    lex.Advance();
    return TFXFormValue::List(std::move(items));
}

TFXFormValue TFXFormReader::ParseCollection(int depth)
{
    CheckDepth(depth);
    TFXFormLexer& lex = *FLexer;
    const TFXFormPosition open = lex.Current().Position;
    lex.Advance();
    std::vector<TFXFormCollectionItem> items;
    for (;;) {
        const TFXFormToken& t = lex.Current();
        if (lex.IsSymbol('>')) {
            lex.Advance();
            return TFXFormValue::Collection(std::move(items));
        }
        if (t.Kind == TFXFormTokenKind::EndOfText)
            lex.Fail(open, "unterminated collection (missing '>')");
        if (!IsKeyword(t, "item"))
            FailHere("expected 'item' or '>' in the collection, found " + DescribeToken(t));
        TFXFormCollectionItem& item = items.emplace_back();
        item.Position = t.Position;
        lex.Advance();
        while (!IsKeyword(lex.Current(), "end")) {
            const TFXFormToken& p = lex.Current();
            if (p.Kind == TFXFormTokenKind::EndOfText)
                lex.Fail(item.Position, "missing 'end' of the collection item");
            if (p.Kind != TFXFormTokenKind::Name)
                FailHere("expected a property name or 'end' in the collection item, found " +
                         DescribeToken(p));
            item.Properties.push_back(ParseProperty(depth));
        }
        lex.Advance();
    }
}

} // namespace framix
