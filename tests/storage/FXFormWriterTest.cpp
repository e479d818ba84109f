// SPDX-License-Identifier: MIT
// Stored-form writer: the normal form, escaping and splitting, refusals, and random round trips.
#include "storage/FXFormWriter.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>

#include "storage/FXFormFile.h"

namespace framix {
namespace {

using V = TFXFormValue;

// A one-property form written with the property at indentation 2.
std::string WrittenValue(const V& value)
{
    TFXFormObject root;
    root.Name = "A";
    root.ClassName = "TA";
    root.Add("P", value);
    return FXWriteFormText(root);
}

std::string OneProperty(const std::string& body)
{
    return "object A: TA\n  P =" + body + "\nend\n";
}

// The seed forms are kept in the normal form: reading and writing them changes nothing.
TEST(FXFormWriter, NormalFormTextsAreWrittenBackUnchanged)
{
    for (const char* name : {"graph.dfm", "every-value.dfm"}) {
        const std::string path = std::string(FRAMIX_SOURCE_DIR) + "/tests/corpus/form/" + name;
        std::ifstream file(path, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        ASSERT_FALSE(text.empty()) << path;
        EXPECT_EQ(FXWriteFormText(FXReadFormText(text)), text) << name;
    }
    EXPECT_EQ(FXWriteFormText(FXReadFormText("object  A :TA X=1 object B:TB end Y=$10 end")),
              "object A: TA\n  X = 1\n  Y = 16\n  object B: TB\n  end\nend\n");
}

TEST(FXFormWriter, WritesFloatsWith18DecimalsAndShortestDigits)
{
    EXPECT_EQ(TFXFormWriter::FormatFloat(0.1), "0.100000000000000000");
    EXPECT_EQ(TFXFormWriter::FormatFloat(-0.0), "-0.000000000000000000");
    EXPECT_EQ(TFXFormWriter::FormatFloat(3), "3.000000000000000000");
    EXPECT_EQ(TFXFormWriter::FormatFloat(1e15), "1.000000000000000000E15");
    EXPECT_EQ(TFXFormWriter::FormatFloat(-2.5e-30), "-2.500000000000000000E-30");
    EXPECT_EQ(TFXFormWriter::FormatFloat(1.0 / 3), "0.333333333333333300");
    for (double v : {0.1, 1.0 / 3, 1e-5, 123456.789, 1e15, 1e300, DBL_MAX, -DBL_MIN, 5e-324, -0.0,
                     2.2250738585072009e-308, 999999999999999.9, 1.2345678901234567e-7}) {
        const V back = FXReadFormText(WrittenValue(V::Float(v))).Properties[0].Value;
        EXPECT_EQ(back, V::Float(v)) << TFXFormWriter::FormatFloat(v);
    }
}

TEST(FXFormWriter, QuotesEscapesAndSplitsStrings)
{
    EXPECT_EQ(WrittenValue(V::String("it's")), OneProperty(" 'it''s'"));
    EXPECT_EQ(WrittenValue(V::String("")), OneProperty(" ''"));
    EXPECT_EQ(WrittenValue(V::String("a\r\nb\x7f")), OneProperty(" 'a'#13#10'b'#127"));
    EXPECT_EQ(WrittenValue(V::String("\tGrüße")), OneProperty(" #9'Grüße'"));
    EXPECT_EQ(WrittenValue(V::String("line1\nline2")), OneProperty(" 'line1'#10'line2'"));
    // Longer than 64 bytes: split after the line feed, then every 64 bytes.
    EXPECT_EQ(WrittenValue(V::String("first line\n" + std::string(130, 'x'))),
              OneProperty("\n    'first line'#10 +\n    '" + std::string(64, 'x') + "' +\n    '" +
                          std::string(64, 'x') + "' +\n    'xx'"));
    // Multi-byte characters are never cut between two parts.
    std::string accents;
    for (int i = 0; i < 100; ++i)
        accents += i % 3 ? "é" : "€";
    const std::string text = WrittenValue(V::String(accents));
    for (std::size_t at = text.find('\''); at != std::string::npos; at = text.find('\'', at + 1))
        EXPECT_NE(std::uint8_t(text[at + 1]) & 0xC0, 0x80) << "a part starts mid-character";
    EXPECT_EQ(FXReadFormText(text).Properties[0].Value.AsString(), accents);
}

TEST(FXFormWriter, RefusesTreesThatWouldNotReadBackEqual)
{
    auto refuses = [](const TFXFormObject& root, const char* why) {
        try {
            FXWriteFormText(root);
            ADD_FAILURE() << "written: " << why;
        } catch (const EFXError& e) {
            EXPECT_NE(std::string(e.what()).find(why), std::string::npos) << e.what();
        }
    };
    auto with = [](std::string path, V value) {
        TFXFormObject root;
        root.ClassName = "TA";
        root.Add(std::move(path), std::move(value));
        return root;
    };
    refuses(with("Kernel..Width", V::Integer(1)), "property path 'Kernel..Width'");
    refuses(with("End", V::Integer(1)), "may not be called 'End'");
    refuses(with("inherited", V::Integer(1)), "may not be called");
    refuses(with("P", V::Identifier("9lives")), "identifier '9lives'");
    refuses(with("P", V::Set({"a.b"})), "set element 'a.b'");
    refuses(with("P", V::Float(NAN)), "has no text form");
    refuses(with("P", V::List({V::Float(-INFINITY)})), "has no text form");
    TFXFormCollectionItem item;
    item.Properties.push_back({"end", V::Integer(1), {}});
    refuses(with("P", V::Collection({item})), "may not be called 'end'");
    TFXFormObject root;
    root.ClassName = "T A";
    refuses(root, "class name 'T A'");
    root.ClassName = "end";
    refuses(root, "class name 'end'");
    // Inside a collection item only `end` is reserved; `object` is an ordinary name there.
    item.Properties[0].Path = "object";
    EXPECT_NO_THROW(FXWriteFormText(with("P", V::Collection({item}))));
}

// Random trees over every value kind, names, flags and odd bytes in strings.
class TRandomForm {
public:
    explicit TRandomForm(unsigned seed) : FRng(seed) {}

    TFXFormObject Object(int depth)
    {
        TFXFormObject o;
        o.Kind = TFXFormObjectKind(Pick(3));
        o.Name = Pick(4) ? Name() : "";
        o.ClassName = "T" + Name();
        o.Index = Pick(4) ? -1 : int(Pick(1000));
        for (int i = 0, n = int(Pick(6)); i < n; ++i)
            o.Add(Path(), Value(0));
        for (int i = 0, n = depth < 3 ? int(Pick(4)) : 0; i < n; ++i)
            o.Children.push_back(Object(depth + 1));
        return o;
    }

private:
    std::uint64_t Pick(std::uint64_t n) { return FRng() % n; }

    std::string Name()
    {
        static const char kChars[] =
            "_ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
        std::string s(1, kChars[Pick(53)]); // no digit first
        for (int i = 0, n = int(Pick(10)); i < n; ++i)
            s += kChars[Pick(sizeof kChars - 1)];
        for (const char* keyword : {"end", "object", "inherited", "inline", "item"})
            if (FXFormSameName(s, keyword))
                return s + "_";
        return s;
    }

    std::string Path()
    {
        std::string s = Name();
        for (int i = 0, n = int(Pick(3)); i < n; ++i)
            s += "." + Name();
        return s;
    }

    // Control codes, quotes, valid UTF-8, stray high bytes (they pass through too), ASCII.
    std::string Text()
    {
        std::string s;
        for (int i = 0, n = int(Pick(4) ? Pick(20) : Pick(300)); i < n; ++i) {
            const auto kind = Pick(6);
            s += kind == 0   ? std::string(1, char(Pick(32)))
                 : kind == 1 ? std::string("'")
                 : kind == 2 ? std::string("é€\xF0\x9F\x98\x80")
                 : kind == 3 ? std::string(1, char(0x80 + Pick(128)))
                             : std::string(1, char(32 + Pick(95)));
        }
        return s;
    }

    V Value(int depth)
    {
        const int kinds = depth < 3 ? 8 : 5;
        switch (Pick(kinds)) {
        case 0:
            return V::Integer(std::int64_t(FRng()) >> Pick(64));
        case 1: {
            double d;
            do {
                const std::uint64_t bits = FRng();
                d = Pick(2) ? std::bit_cast<double>(bits) : double(std::int64_t(bits) >> 40) / 1024;
            } while (!std::isfinite(d));
            return V::Float(d);
        }
        case 2:
            return V::String(Text());
        case 3:
            return V::Identifier(Path());
        case 4: {
            std::vector<std::string> names;
            for (int i = 0, n = int(Pick(4)); i < n; ++i)
                names.push_back(Name());
            return V::Set(names);
        }
        case 5: {
            std::vector<V> items;
            for (int i = 0, n = int(Pick(5)); i < n; ++i)
                items.push_back(Value(depth + 1));
            return V::List(items);
        }
        case 6: {
            std::vector<std::uint8_t> bytes(Pick(4) ? Pick(8) : Pick(200));
            for (auto& b : bytes)
                b = std::uint8_t(FRng());
            return V::Binary(bytes);
        }
        default: {
            std::vector<TFXFormCollectionItem> items(Pick(4));
            for (auto& item : items)
                for (int i = 0, n = int(Pick(4)); i < n; ++i)
                    item.Properties.push_back({Path(), Value(depth + 1), {}});
            return V::Collection(items);
        }
        }
    }

    std::mt19937_64 FRng;
};

TEST(FXFormWriter, RandomTreesReadBackEqualAndRewriteIdentically)
{
    for (unsigned seed = 1; seed <= 300; ++seed) {
        const TFXFormObject tree = TRandomForm(seed).Object(0);
        const std::string text = FXWriteFormText(tree);
        TFXFormObject back;
        ASSERT_NO_THROW(back = FXReadFormText(text)) << "seed " << seed << "\n" << text;
        ASSERT_TRUE(back == tree) << "seed " << seed << "\n" << text;
        ASSERT_EQ(FXWriteFormText(back), text) << "seed " << seed;
    }
}

TEST(FXFormWriter, FileRoundTripKeepsTheTree)
{
    const auto dir = std::filesystem::temp_directory_path() / "framix-form-writer-test";
    std::filesystem::create_directories(dir);
    const TFXFormObject tree = TRandomForm(77).Object(0);
    FXWriteFormFile(tree, dir / "g.dfm");
    EXPECT_TRUE(FXReadFormFile(dir / "g.dfm") == tree);
    EXPECT_THROW(FXWriteFormFile(tree, dir / "missing-dir" / "g.dfm"), EFXError);
    std::filesystem::remove_all(dir);
}

} // namespace
} // namespace framix
