// SPDX-License-Identifier: MIT
// Stored-form reader: every syntax element, positions, error locations and hostile input.
#include "storage/FXFormReader.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <filesystem>
#include <string>

#include "storage/FXFormFile.h"

namespace framix {
namespace {

TFXFormObject Read(std::string_view text)
{
    return FXReadFormText(text, "test.dfm");
}

// The value of the single property of a one-property form.
TFXFormValue ValueOf(const std::string& valueText)
{
    const TFXFormObject root = Read("object A: TA\n  P = " + valueText + "\nend\n");
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
    const TFXFormObject root = Read(R"(object Graph1: TFXGraph
  object Jaehne1: TFXJaehneGen
    ImageSize.Width = 320
    ImageSize.Height = 240
  end
  object Blur1: TFXGaussianBlur
    Kernel.Width = 7
    Kernel.SigmaX = 1.500000000000000000
    InputPin.SourcePin = Graph1.Jaehne1.OutputPin
    OutputPin.SinkPins = (
      Graph1.Logger1.InputPin)
  end
  object Logger1: TFXFileLogger
    FileName = 'out.y4m'
  end
end
)");
    EXPECT_EQ(root.Name, "Graph1");
    EXPECT_EQ(root.ClassName, "TFXGraph");
    ASSERT_EQ(root.Children.size(), 3u);
    const TFXFormObject* blur = root.FindDescendant("Blur1");
    ASSERT_NE(blur, nullptr);
    EXPECT_EQ(blur->ClassName, "TFXGaussianBlur");
    EXPECT_EQ(blur->FindProperty("kernel.width")->Value.AsInteger(), 7);
    EXPECT_EQ(blur->FindProperty("Kernel.SigmaX")->Value.AsNumber(), 1.5);
    EXPECT_EQ(blur->FindProperty("InputPin.SourcePin")->Value.AsIdentifier(),
              "Graph1.Jaehne1.OutputPin");
    const auto& sinks = blur->FindProperty("OutputPin.SinkPins")->Value.AsList();
    ASSERT_EQ(sinks.size(), 1u);
    EXPECT_EQ(sinks[0].AsIdentifier(), "Graph1.Logger1.InputPin");
    EXPECT_EQ(root.Children[2].FindProperty("FileName")->Value.AsString(), "out.y4m");
    EXPECT_EQ(root.FindDescendant("Jaehne1")->Properties.size(), 2u);
    EXPECT_EQ(root.FindDescendant("Nope"), nullptr);
}

TEST(FXFormReader, ReadsIntegersInDecimalHexAndAtTheLimits)
{
    EXPECT_EQ(ValueOf("0").AsInteger(), 0);
    EXPECT_EQ(ValueOf("-42").AsInteger(), -42);
    EXPECT_EQ(ValueOf("$FF").AsInteger(), 255);
    EXPECT_EQ(ValueOf("$ff").AsInteger(), 255);
    EXPECT_EQ(ValueOf("-$10").AsInteger(), -16);
    EXPECT_EQ(ValueOf("$FFFFFFFFFFFFFFFF").AsInteger(), -1);
    EXPECT_EQ(ValueOf("9223372036854775807").AsInteger(), LLONG_MAX);
    EXPECT_EQ(ValueOf("-9223372036854775808").AsInteger(), LLONG_MIN);
    EXPECT_EQ(ValueOf("7").Kind(), TFXFormValueKind::Integer);
}

TEST(FXFormReader, ReadsFloatsInFixedAndExponentForms)
{
    EXPECT_EQ(ValueOf("1.500000000000000000").AsNumber(), 1.5);
    EXPECT_EQ(ValueOf("-2.5E-3").AsNumber(), -2.5e-3);
    EXPECT_EQ(ValueOf("1e5").Kind(), TFXFormValueKind::Float);
    EXPECT_EQ(ValueOf("1E+5").AsNumber(), 1e5);
    EXPECT_EQ(ValueOf("4.9406564584124654E-324").AsNumber(), 4.9406564584124654e-324);
    EXPECT_TRUE(std::signbit(ValueOf("-0.0").AsNumber()));
}

TEST(FXFormReader, JoinsQuotedRunsCharacterCodesAndContinuations)
{
    EXPECT_EQ(ValueOf("'it''s'").AsString(), "it's");
    EXPECT_EQ(ValueOf("''").AsString(), "");
    EXPECT_EQ(ValueOf("''''").AsString(), "'");
    EXPECT_EQ(ValueOf("'a'#13#10'b'").AsString(), "a\r\nb");
    EXPECT_EQ(ValueOf("#65#$42'C'").AsString(), "ABC");
    EXPECT_EQ(ValueOf("'first ' +\n    'second' + #33").AsString(), "first second!");
    EXPECT_EQ(ValueOf("'tab\there'").AsString(), "tab\there");
}

TEST(FXFormReader, KeepsUtf8TextAndEncodesHighCodesAsUtf8)
{
    EXPECT_EQ(ValueOf("'Grüße, 東京'").AsString(), "Grüße, 東京");
    EXPECT_EQ(ValueOf("#228").AsString(), "ä"); // above 127: a code point, not a byte
    EXPECT_EQ(ValueOf("#8364'x'").AsString(), "€x");
    EXPECT_EQ(ValueOf("#$1F600").AsString(), "\xF0\x9F\x98\x80");
    EXPECT_EQ(ValueOf("#55357#56832").AsString(), "\xF0\x9F\x98\x80"); // a UTF-16 pair
    EXPECT_EQ(ValueOf("#0").AsString(), std::string(1, '\0'));
}

TEST(FXFormReader, ReadsSetsListsBinaryBlocksAndCollections)
{
    EXPECT_EQ(ValueOf("[fsBold, fsItalic]").AsSet(),
              (std::vector<std::string>{"fsBold", "fsItalic"}));
    EXPECT_TRUE(ValueOf("[]").AsSet().empty());
    EXPECT_TRUE(ValueOf("()").AsList().empty());

    const TFXFormValue list = ValueOf("(\n  1 'two'\n  (3.0 (four))\n  [five] {06} <>)");
    const auto& items = list.AsList();
    ASSERT_EQ(items.size(), 6u);
    EXPECT_EQ(items[0].AsInteger(), 1);
    EXPECT_EQ(items[1].AsString(), "two");
    EXPECT_EQ(items[2].AsList()[1].AsList()[0].AsIdentifier(), "four");
    EXPECT_EQ(items[3].AsSet()[0], "five");
    EXPECT_EQ(items[4].AsBinary(), std::vector<std::uint8_t>{6});
    EXPECT_TRUE(items[5].AsCollection().empty());

    EXPECT_EQ(ValueOf("{\n  00FF10\n  a0 B1}").AsBinary(),
              (std::vector<std::uint8_t>{0x00, 0xFF, 0x10, 0xA0, 0xB1}));
    EXPECT_TRUE(ValueOf("{}").AsBinary().empty());

    const TFXFormValue coll = ValueOf("<\n  item\n    Name = 'a'\n    Size.W = 3\n  end\n"
                                      "  item\n  end>");
    const auto& entries = coll.AsCollection();
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].Find("name")->Value.AsString(), "a");
    EXPECT_EQ(entries[0].Find("Size.W")->Value.AsInteger(), 3);
    EXPECT_TRUE(entries[1].Properties.empty());
    EXPECT_TRUE(ValueOf("<>").AsCollection().empty());
}

TEST(FXFormReader, AcceptsHeaderVariantsKeywordCaseCrlfAndByteOrderMark)
{
    const TFXFormObject root = Read("\xEF\xBB\xBFOBJECT TFXGraph [2]\r\n"
                                    "  inherited Base: TBase\r\n  End\r\n"
                                    "  X = True\r\n" // a property after a child is accepted
                                    "  inline Frame1: TFrame1 [0]\r\n  end\r\nEND");
    EXPECT_EQ(root.Name, "");
    EXPECT_EQ(root.ClassName, "TFXGraph");
    EXPECT_EQ(root.Index, 2);
    ASSERT_EQ(root.Children.size(), 2u);
    EXPECT_EQ(root.Children[0].Kind, TFXFormObjectKind::Inherited);
    EXPECT_EQ(root.Children[1].Kind, TFXFormObjectKind::Inline);
    EXPECT_EQ(root.Children[1].Index, 0);
    EXPECT_TRUE(root.FindProperty("X")->Value.AsBoolean());
    EXPECT_EQ(root.Children[1].Position.Line, 5);
}

TEST(FXFormReader, RecordsLinesAndCharacterColumnsOfEveryItem)
{
    const TFXFormObject root = Read("object A: TA\n  S = 'ä€'\n  T = 5\n"
                                    "  L = (\n    x y)\n  object B: TB\n  end\nend");
    EXPECT_EQ(root.Position.Line, 1);
    EXPECT_EQ(root.Properties[0].Position.Line, 2);
    EXPECT_EQ(root.Properties[0].Position.Column, 3);
    EXPECT_EQ(root.Properties[0].Value.Position().Column, 7);
    EXPECT_EQ(root.Properties[1].Value.Position().Line, 3);
    EXPECT_EQ(root.Properties[2].Value.AsList()[1].Position().Line, 5);
    EXPECT_EQ(root.Properties[2].Value.AsList()[1].Position().Column, 7);
    EXPECT_EQ(root.Children[0].Position.Line, 6);
    EXPECT_EQ(root.Children[0].Position.Column, 3);
    // Columns count characters: the multi-byte text before `x` does not shift it.
    const TFXFormObject r2 = Read("object A: TA\n  S = 'ä€' + 'x' T = 1\nend");
    EXPECT_EQ(r2.Properties[1].Position.Column, 18);
}

struct TSyntaxErrorCase {
    const char* Text;
    int Line;
    int Column;
    const char* Message;
};

TEST(FXFormReader, ReportsSyntaxErrorsWithFileLineAndColumn)
{
    const TSyntaxErrorCase cases[] = {
        {"object A: TA\n  Kernel.Width 7\nend", 2, 16,
         "expected '=' after property name 'Kernel.Width'"},
        {"object A: TA\n  S = 'open\nend", 2, 7, "unterminated string"},
        {"object A: TA\n  L = (1 2\n", 2, 7, "unterminated list"},
        {"object A: TA\n  C = <item X = 1>\nend", 2, 18, "expected a property name or 'end'"},
        {"object A: TA\n  C = <thing>\nend", 2, 8, "expected 'item' or '>'"},
        {"object A: TA\n  B = {0A1}\nend", 2, 7, "odd number of hex digits"},
        {"object A: TA\n  B = {0G}\nend", 2, 9, "unexpected character 'G' in binary block"},
        {"object A: TA\n  B = {00", 2, 7, "unterminated binary block"},
        {"object A: TA\n  X = 1\n", 3, 1, "missing 'end' of object 'A' begun on line 1"},
        {"object A: TA\nend\nobject B: TB\nend", 3, 1, "unexpected 'object' after the final 'end'"},
        {"  A = 1", 1, 3, "expected 'object' at the start of the form, found 'A'"},
        {"object A: TA\n  X = 99999999999999999999\nend", 2, 7,
         "integer '99999999999999999999' is out of range"},
        {"object A: TA\n  X = 1e999\nend", 2, 7, "out of range"},
        {"object A: TA\n  X = 12abc\nend", 2, 7, "malformed number"},
        {"object A: TA\n  X = $\nend", 2, 7, "expected hex digits"},
        {"object A: TA\n  X = $11112222333344445\nend", 2, 7, "more than 16 digits"},
        {"object A: TA\n  X = #56832\nend", 2, 7, "surrogate"},
        {"object A: TA\n  X = #55357'a'\nend", 2, 7, "surrogate"},
        {"object A: TA\n  X = #1114112\nend", 2, 7, "above 0x10FFFF"},
        {"object A: TA\n  X = #\nend", 2, 7, "expected a character code"},
        {"object A: TA\n  X = 'a' + 5\nend", 2, 13, "expected a string after '+'"},
        {"object A: TA\n  X = [a b]\nend", 2, 10, "expected ',' or ']'"},
        {"object A: TA\n  X = [1]\nend", 2, 8, "expected a name in the set"},
        {"object A: TA\n  X = )\nend", 2, 7, "expected a value, found ')'"},
        {"object A: TA\n  Kernel. = 1\nend", 2, 9, "expected a name after 'Kernel.'"},
        {"object A: TA\n  X = 1 ; \nend", 2, 9, "unexpected character ';'"},
        {"object A: TA\n  X = 1 \x01\nend", 2, 9, "unexpected byte 0x01"},
        {"object A: TA\n  = 1\nend", 2, 3, "expected a property name, 'object' or 'end'"},
        {"object : TA\nend", 1, 8, "expected an object name after 'object'"},
        {"object A:\nend", 2, 1, "expected a class name after ':', found 'end'"},
        {"object A.B: TA\nend", 1, 8, "must not contain '.'"},
        {"object A: TA [x]\nend", 1, 15, "expected a creation index"},
        {"object A: TA [1\nend", 2, 1, "expected ']'"},
    };
    for (const TSyntaxErrorCase& c : cases) {
        const EFXFormError e = ErrorOf(c.Text);
        SCOPED_TRACE(c.Text);
        EXPECT_EQ(e.FileName(), "graph.dfm");
        EXPECT_EQ(e.Line(), c.Line);
        EXPECT_EQ(e.Column(), c.Column);
        EXPECT_NE(e.Reason().find(c.Message), std::string::npos) << e.what();
        const std::string prefix =
            "graph.dfm:" + std::to_string(c.Line) + ':' + std::to_string(c.Column) + ": ";
        EXPECT_EQ(std::string(e.what()).rfind(prefix, 0), 0u) << e.what();
    }
}

TEST(FXFormReader, RefusesNestingAndValuesBeyondTheLimitsWithoutExhaustingTheStack)
{
    const std::string deepList = "object A: TA\n  X = " + std::string(100000, '(');
    EXPECT_NE(ErrorOf(deepList).Reason().find("nesting deeper than the limit of 200"),
              std::string::npos);
    std::string deepObjects;
    for (int i = 0; i < 50000; ++i)
        deepObjects += "object A: TA\n";
    EXPECT_NE(ErrorOf(deepObjects).Reason().find("nesting"), std::string::npos);
    std::string deepItems = "object A: TA\n  X = ";
    for (int i = 0; i < 50000; ++i)
        deepItems += "<item Y = ";
    EXPECT_NE(ErrorOf(deepItems).Reason().find("nesting"), std::string::npos);

    TFXFormLimits small;
    small.MaxDepth = 3;
    small.MaxValueBytes = 8;
    EXPECT_NO_THROW(FXReadFormText("object A: TA\n  X = ((1))\nend", "", small));
    EXPECT_NE(ErrorOf("object A: TA\n  X = (((1)))\nend", small).Reason().find("nesting"),
              std::string::npos);
    EXPECT_NO_THROW(FXReadFormText("object A: TA\n  X = '12345678'\nend", "", small));
    for (const char* tooLong : {"'123456789'", "'12345' + '6789'", "{000102030405060708}",
                                "#65#65#65#65#65#65#65#65#65", "abcdefghi"}) {
        const EFXFormError e =
            ErrorOf(std::string("object A: TA\n  X = ") + tooLong + "\nend", small);
        EXPECT_NE(e.Reason().find("longer than the limit of 8 bytes"), std::string::npos)
            << tooLong;
    }
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
    const TFXFormValue s = TFXFormValue::String("x");
    try {
        (void)s.AsInteger();
        FAIL() << "no error";
    } catch (const EFXError& e) {
        EXPECT_STREQ(e.what(), "expected integer, found string 'x'");
    }
    EXPECT_EQ(TFXFormValue::Integer(3).AsNumber(), 3.0);
    EXPECT_FALSE(TFXFormValue::Identifier("FALSE").AsBoolean());
    EXPECT_THROW((void)TFXFormValue::Identifier("Maybe").AsBoolean(), EFXError);
    EXPECT_THROW((void)TFXFormValue::Float(1).AsInteger(), EFXError);
    // Equality is by content and bit pattern: -0.0 and 0.0 are different values to store.
    EXPECT_NE(TFXFormValue::Float(0.0), TFXFormValue::Float(-0.0));
    EXPECT_NE(TFXFormValue::String("a"), TFXFormValue::Identifier("a"));
    TFXFormValue positioned = TFXFormValue::Integer(1);
    positioned.SetPosition({4, 2});
    EXPECT_EQ(positioned, TFXFormValue::Integer(1));
}

} // namespace
} // namespace framix
