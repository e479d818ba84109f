// SPDX-License-Identifier: MIT
// Stored-form reader: every syntax element, positions, error locations and hostile input.
#include "storage/FXFormReader.h"

#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <string>

#include "storage/FXFormFile.h"

namespace framix {
namespace {

using V = TFXFormValue;

// The value of the single property of a one-property form.
V ValueOf(const std::string& valueText)
{
    const TFXFormObject root = FXReadFormText("object A: TA\n  P = " + valueText + "\nend\n");
    EXPECT_EQ(root.Properties.size(), 1u);
    return root.Properties.at(0).Value;
}

EFXFormError ErrorOf(std::string_view text, TFXFormLimits limits = {})
{
    try {
        FXReadFormText(text, "graph.dfm", limits);
    } catch (const EFXFormError& e) {
        return e;
    }
    ADD_FAILURE() << "no error for:\n" << text;
    return EFXFormError("", {}, "");
}

TEST(FXFormReader, ReadsAGraphWithNestedObjectsGroupsAndPinLinks)
{
    const TFXFormObject root =
        FXReadFormFile(std::string(FRAMIX_SOURCE_DIR) + "/tests/corpus/form/graph.dfm");
    EXPECT_EQ(root.Name, "Graph1");
    EXPECT_EQ(root.ClassName, "TFXGraph");
    ASSERT_EQ(root.Children.size(), 3u);
    const TFXFormObject* blur = root.FindDescendant("Blur1");
    ASSERT_NE(blur, nullptr);
    EXPECT_EQ(blur->FindProperty("kernel.sigmax")->Value.AsNumber(), 1.5);
    EXPECT_EQ(blur->FindProperty("InputPin.SourcePin")->Value.AsIdentifier(),
              "Graph1.Jaehne1.OutputPin");
    EXPECT_EQ(blur->FindProperty("OutputPin.SinkPins")->Value,
              V::List({V::Identifier("Graph1.Logger1.InputPin")}));
    EXPECT_EQ(root.FindDescendant("Logger1")->FindProperty("FileName")->Value,
              V::String("out.y4m"));
    EXPECT_EQ(root.FindDescendant("Nope"), nullptr);
}

TEST(FXFormReader, ReadsEveryNumberAndStringNotation)
{
    const std::pair<const char*, V> cases[] = {
        {"-42", V::Integer(-42)},
        {"$ff", V::Integer(255)},
        {"-$10", V::Integer(-16)},
        {"$FFFFFFFFFFFFFFFF", V::Integer(-1)},
        {"9223372036854775807", V::Integer(LLONG_MAX)},
        {"-9223372036854775808", V::Integer(LLONG_MIN)},
        {"1.500000000000000000", V::Float(1.5)},
        {"-2.5E-3", V::Float(-2.5e-3)},
        {"1e5", V::Float(1e5)},
        {"1E+5", V::Float(1e5)},
        {"4.9406564584124654E-324", V::Float(4.9406564584124654e-324)},
        {"-0.0", V::Float(-0.0)},
        {"'it''s'", V::String("it's")},
        {"''''", V::String("'")},
        {"'a'#13#10'b'", V::String("a\r\nb")},
        {"#65#$42'C'", V::String("ABC")},
        {"'first ' +\n    'second' + #33", V::String("first second!")},
        {"'tab\there'", V::String("tab\there")},
        {"'Grüße, 東京'", V::String("Grüße, 東京")}, // UTF-8 text is kept as it is
        {"#228", V::String("ä")},                    // above 127: a code point, not a byte
        {"#$1F600", V::String("\xF0\x9F\x98\x80")},
        {"#55357#56832", V::String("\xF0\x9F\x98\x80")}, // a UTF-16 surrogate pair
        {"#0", V::String(std::string(1, '\0'))},
        {"True", V::Identifier("True")},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(ValueOf(text), expected) << text;
}

TEST(FXFormReader, ReadsSetsListsBinaryBlocksAndCollections)
{
    EXPECT_EQ(ValueOf("[fsBold, fsItalic]"), V::Set({"fsBold", "fsItalic"}));
    EXPECT_EQ(ValueOf("[]"), V::Set({}));
    EXPECT_EQ(ValueOf("(\n  1 'two'\n  (3.0 (four))\n  [five] {06} <>)"),
              V::List({V::Integer(1), V::String("two"),
                       V::List({V::Float(3), V::List({V::Identifier("four")})}), V::Set({"five"}),
                       V::Binary({6}), V::Collection({})}));
    EXPECT_EQ(ValueOf("{\n  00FF10\n  a0 B1}"), V::Binary({0x00, 0xFF, 0x10, 0xA0, 0xB1}));
    EXPECT_EQ(ValueOf("{}"), V::Binary({}));
    const V coll = ValueOf("<\n  item\n    Name = 'a'\n    Size.W = 3\n  end\n  item\n  end>");
    ASSERT_EQ(coll.AsCollection().size(), 2u);
    EXPECT_EQ(coll.AsCollection()[0].Find("name")->Value, V::String("a"));
    EXPECT_EQ(coll.AsCollection()[0].Find("Size.W")->Value, V::Integer(3));
    EXPECT_TRUE(coll.AsCollection()[1].Properties.empty());
}

TEST(FXFormReader, AcceptsHeaderVariantsKeywordCaseCrlfAndByteOrderMark)
{
    const TFXFormObject root = FXReadFormText("\xEF\xBB\xBFOBJECT TFXGraph [2]\r\n"
                                              "  inherited Base: TBase\r\n  End\r\n"
                                              "  X = 1\r\n" // a property after a child
                                              "  inline Frame1: TFrame1 [0]\r\n  end\r\nEND");
    EXPECT_EQ(root.Name, "");
    EXPECT_EQ(root.ClassName, "TFXGraph");
    EXPECT_EQ(root.Index, 2);
    ASSERT_EQ(root.Children.size(), 2u);
    EXPECT_EQ(root.Children[0].Kind, TFXFormObjectKind::Inherited);
    EXPECT_EQ(root.Children[1].Kind, TFXFormObjectKind::Inline);
    EXPECT_EQ(root.Children[1].Index, 0);
    EXPECT_EQ(root.Children[1].Position.Line, 5);
    EXPECT_EQ(root.Properties.size(), 1u);
}

TEST(FXFormReader, RecordsLinesAndCharacterColumnsOfEveryItem)
{
    const TFXFormObject root = FXReadFormText("object A: TA\n  S = 'ä€' + 'x' T = 5\n"
                                              "  L = (\n    x y)\n  object B: TB\n  end\nend");
    EXPECT_EQ(root.Properties[0].Position.Line, 2);
    EXPECT_EQ(root.Properties[0].Position.Column, 3);
    EXPECT_EQ(root.Properties[0].Value.Position().Column, 7);
    // Columns count characters: the multi-byte text before T does not shift it.
    EXPECT_EQ(root.Properties[1].Position.Column, 18);
    EXPECT_EQ(root.Properties[2].Value.AsList()[1].Position().Line, 4);
    EXPECT_EQ(root.Properties[2].Value.AsList()[1].Position().Column, 7);
    EXPECT_EQ(root.Children[0].Position.Line, 5);
    EXPECT_EQ(root.Children[0].Position.Column, 3);
}

TEST(FXFormReader, ReportsSyntaxErrorsWithFileLineAndColumn)
{
    const struct {
        const char* Text;
        int Line;
        int Column;
        const char* Message;
    } cases[] = {
        {"object A: TA\n  Kernel.Width 7\nend", 2, 16,
         "expected '=' after property name 'Kernel.Width'"},
        {"object A: TA\n  S = 'open\nend", 2, 7, "unterminated string"},
        {"object A: TA\n  L = (1 2\n", 2, 7, "unterminated list"},
        {"object A: TA\n  C = <item X = 1>\nend", 2, 18, "expected a property name or 'end'"},
        {"object A: TA\n  C = <thing>\nend", 2, 8, "expected 'item' or '>'"},
        {"object A: TA\n  B = {0A1}\nend", 2, 7, "odd number of hex digits"},
        {"object A: TA\n  B = {0G}\nend", 2, 9, "unexpected character 'G' in binary block"},
        {"object A: TA\n  X = 1\n", 3, 1, "missing 'end' of object 'A' begun on line 1"},
        {"object A: TA\nend\nobject B: TB\nend", 3, 1, "unexpected 'object' after the final 'end'"},
        {"  A = 1", 1, 3, "expected 'object' at the start of the form, found 'A'"},
        {"object A: TA\n  X = 99999999999999999999\nend", 2, 7, "is out of range"},
        {"object A: TA\n  X = 1e999\nend", 2, 7, "is out of range"},
        {"object A: TA\n  X = 12abc\nend", 2, 7, "malformed number"},
        {"object A: TA\n  X = $11112222333344445\nend", 2, 7, "more than 16 digits"},
        {"object A: TA\n  X = #55357'a'\nend", 2, 7, "half of a surrogate pair"},
        {"object A: TA\n  X = #1114112\nend", 2, 7, "above 0x10FFFF"},
        {"object A: TA\n  X = 'a' + 5\nend", 2, 13, "expected a string after '+'"},
        {"object A: TA\n  X = [a b]\nend", 2, 10, "expected ',' or ']'"},
        {"object A: TA\n  X = )\nend", 2, 7, "expected a value, found ')'"},
        {"object A: TA\n  Kernel. = 1\nend", 2, 9, "expected a name after 'Kernel.'"},
        {"object A: TA\n  X = 1 \x01\nend", 2, 9, "unexpected byte 0x01"},
        {"object A:\nend", 2, 1, "expected a class name after ':', found 'end'"},
        {"object A.B: TA\nend", 1, 8, "must not contain '.'"},
        {"object A: TA [x]\nend", 1, 15, "expected a creation index"},
    };
    for (const auto& c : cases) {
        const EFXFormError e = ErrorOf(c.Text);
        const std::string prefix =
            "graph.dfm:" + std::to_string(c.Line) + ':' + std::to_string(c.Column) + ": ";
        EXPECT_EQ(std::string(e.what()).rfind(prefix, 0), 0u) << e.what();
        EXPECT_NE(e.Reason().find(c.Message), std::string::npos) << e.what();
    }
}

TEST(FXFormReader, RefusesNestingAndValuesBeyondTheLimitsWithoutExhaustingTheStack)
{
    // Far deeper than any stack would survive with unbounded recursion.
    std::string deepObjects, deepItems = "object A: TA\n  X = ";
    for (int i = 0; i < 50000; ++i) {
        deepObjects += "object A: TA\n";
        deepItems += "<item Y = ";
    }
    for (const std::string& text :
         {"object A: TA\n  X = " + std::string(100000, '('), deepObjects, deepItems})
        EXPECT_NE(ErrorOf(text).Reason().find("nesting deeper than the limit of 200"),
                  std::string::npos);

    TFXFormLimits small;
    small.MaxDepth = 3;
    small.MaxValueBytes = 8;
    EXPECT_NO_THROW(FXReadFormText("object A: TA\n  X = ((1))\n  Y = '12345678'\nend", "", small));
    EXPECT_NE(ErrorOf("object A: TA\n  X = (((1)))\nend", small).Reason().find("nesting"),
              std::string::npos);
    for (const char* tooLong : {"'123456789'", "'12345' + '6789'", "{000102030405060708}",
                                "#65#65#65#65#65#65#65#65#65", "abcdefghi"})
        EXPECT_NE(ErrorOf(std::string("object A: TA\n  X = ") + tooLong + "\nend", small)
                      .Reason()
                      .find("longer than the limit of 8 bytes"),
                  std::string::npos)
            << tooLong;
    small.MaxTextBytes = 10;
    EXPECT_NE(ErrorOf("object A: TA\nend", small).Reason().find("larger than the limit"),
              std::string::npos);
}

TEST(FXFormReader, MissingFileIsAnErrorNamingIt)
{
    const auto path = std::filesystem::temp_directory_path() / "framix-no-such-form.dfm";
    try {
        FXReadFormFile(path);
        FAIL() << "no error";
    } catch (const EFXError& e) {
        EXPECT_NE(std::string(e.what()).find("framix-no-such-form.dfm: cannot open"),
                  std::string::npos);
    }
}

TEST(FXFormValue, AccessorsNameTheExpectedAndTheActualKind)
{
    try {
        (void)V::String("x").AsInteger();
        FAIL() << "no error";
    } catch (const EFXError& e) {
        EXPECT_STREQ(e.what(), "expected integer, found string 'x'");
    }
    EXPECT_EQ(V::Integer(3).AsNumber(), 3.0);
    EXPECT_FALSE(V::Identifier("FALSE").AsBoolean());
    EXPECT_THROW((void)V::Identifier("Maybe").AsBoolean(), EFXError);
    // Equality is by content and bit pattern, never by position.
    EXPECT_NE(V::Float(0.0), V::Float(-0.0));
    EXPECT_NE(V::String("a"), V::Identifier("a"));
    V positioned = V::Integer(1);
    positioned.SetPosition({4, 2});
    EXPECT_EQ(positioned, V::Integer(1));
}

} // namespace
} // namespace framix
