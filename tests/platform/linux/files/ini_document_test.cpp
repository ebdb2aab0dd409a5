#include "platform/linux/files/ini_document.h"

#include <gmock/gmock.h>

namespace amperly {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

PreferenceDictionary valuesIn(std::string_view bytes)
{
    return IniDocument(bytes).values();
}

/// What becomes of `bytes` when `key` is set.
std::string afterSetting(std::string_view bytes, std::string_view key, std::string_view text)
{
    IniDocument document(bytes);
    document.set(key, text);
    return document.bytes();
}

std::string afterRemoving(std::string_view bytes, std::string_view key)
{
    IniDocument document(bytes);
    document.remove(key);
    return document.bytes();
}

TEST(IniDocumentTest, UnchangedBytesComeBack)
{
    for (const std::string& bytes : {""s, "\n"s, "a=1"s, "a=1\n"s, "\r\n\r\n"s, "\xEF\xBB\xBF"s,
             "\xEF\xBB\xBF# c\r\na = 1\r\n[x"s, "\0\xff\n\n=\n[General]\n;\n"s})
        EXPECT_EQ(IniDocument(bytes).bytes(), bytes);
}

TEST(IniDocumentTest, EntriesBeforeTheFirstSectionAndInGeneralAreThePreferences)
{
    EXPECT_THAT(valuesIn("a=1\n[Window]\nb=2\n[General]\nc=3\n[ General ] ; again\nd=4\n[general]\ne=5\n"),
        ElementsAre(Pair("a", PreferenceValue("1")), Pair("c", PreferenceValue("3")),
            Pair("d", PreferenceValue("4"))));
}

TEST(IniDocumentTest, BlanksAroundKeysAndValuesDoNotCount)
{
    EXPECT_EQ(valuesIn("\t stackedLayout =  true \t\r\n").at("stackedLayout"), PreferenceValue("true"));
    EXPECT_EQ(valuesIn("a=\n").at("a"), PreferenceValue(""));
    EXPECT_EQ(valuesIn("a= \r\n").at("a"), PreferenceValue(""));
    EXPECT_EQ(valuesIn("a=\" 1 \"\n").at("a"), PreferenceValue(" 1 "));
    EXPECT_EQ(valuesIn("\"a=b\" = c=d\n").at("a=b"), PreferenceValue("c=d"));
}

TEST(IniDocumentTest, LastOfSeveralEntriesCounts)
{
    EXPECT_EQ(valuesIn("a=1\na=2\n").at("a"), PreferenceValue("2"));
    EXPECT_EQ(afterSetting("a=1\na=2\n", "a", "3"), "a=1\na=3\n");
    EXPECT_EQ(afterRemoving("a=1\nb=0\na=2\n", "a"), "b=0\n");
}

TEST(IniDocumentTest, ByteOrderMarkIsNoPartOfTheFirstKey)
{
    EXPECT_EQ(valuesIn("\xEF\xBB\xBF"
                       "a=1\n")
                  .at("a"),
        PreferenceValue("1"));
    EXPECT_EQ(afterSetting("\xEF\xBB\xBF[x]\n", "a", "1"),
        "\xEF\xBB\xBF"
        "a=1\n[x]\n");
}

TEST(IniDocumentTest, DamagedLinesCountForNothing)
{
    const std::string bytes = "a=1\n[General\n=5\nno entry\nb=\xFF\nc=\0\nd=4\n[x] y\n\xEF\xBB\xBF"
                              "e=5\nf=6\r\r\ng=7"s;
    const IniDocument document(bytes);
    EXPECT_TRUE(document.isDamaged());
    EXPECT_THAT(document.values(),
        ElementsAre(Pair("a", PreferenceValue("1")), Pair("d", PreferenceValue("4")),
            Pair("g", PreferenceValue("7"))));
}

TEST(IniDocumentTest, KeyInIncompleteQuotesIsDamage)
{
    // A value with quotes of its own would otherwise complete it and become part of the key.
    for (const std::string& line : {"\"a=1"s, "\"="s, "\"a\"b=1"s, "\"a\\\"=1"s}) {
        EXPECT_TRUE(IniDocument(line).isDamaged()) << line;
        EXPECT_THAT(valuesIn(line), IsEmpty()) << line;
    }
}

TEST(IniDocumentTest, DroppingDamageLeavesTheValues)
{
    IniDocument document("# mine\na=1\nnonsense\n[x]\nb=2\n\0\n"s);
    document.dropDamage();
    EXPECT_FALSE(document.isDamaged());
    EXPECT_EQ(document.bytes(), "# mine\na=1\n[x]\nb=2\n");
}

TEST(IniDocumentTest, NothingButDamageLeavesNothing)
{
    IniDocument document(std::string(5000, '\0'));
    EXPECT_THAT(document.values(), IsEmpty());
    document.dropDamage();
    EXPECT_EQ(document.bytes(), "");
}

TEST(IniDocumentTest, SoundFileIsNotDamaged)
{
    EXPECT_FALSE(IniDocument("# c\n; c\n\n  \n[x]\na=1\r\n[y] # c\nb = \"\\n\"").isDamaged());
}

TEST(IniDocumentTest, ValueIsChangedInItsPlace)
{
    EXPECT_EQ(afterSetting("# one\n  a = 1  \n# two\nb=2\n", "a", "3"), "# one\n  a = 3  \n# two\nb=2\n");
    EXPECT_EQ(afterSetting("a=1\r\nb=2\r\n", "a", "3"), "a=3\r\nb=2\r\n");
    EXPECT_EQ(afterSetting("a=", "a", "3"), "a=3");
    EXPECT_EQ(afterSetting("[x]\na=1\n[General]\na=2\n", "a", "3"), "[x]\na=1\n[General]\na=3\n");
}

TEST(IniDocumentTest, EqualValueKeepsTheWayItIsWritten)
{
    EXPECT_EQ(afterSetting("a=\"1\"", "a", "1"), "a=\"1\"");
}

TEST(IniDocumentTest, NewPreferenceStandsBehindTheOthers)
{
    EXPECT_EQ(afterSetting("", "a", "1"), "a=1\n");
    EXPECT_EQ(afterSetting("b=2", "a", "1"), "b=2\na=1\n");
    EXPECT_EQ(afterSetting("# c\r\nb=2\r\n\r\n[x]\r\n", "a", "1"), "# c\r\nb=2\r\na=1\r\n\r\n[x]\r\n");
    EXPECT_EQ(afterSetting("[General]\nb=2\n\n[x]\n", "a", "1"), "[General]\nb=2\na=1\n\n[x]\n");
    EXPECT_EQ(afterSetting("[x]\nb=2\n[General]\n", "a", "1"), "[x]\nb=2\n[General]\na=1\n");
}

TEST(IniDocumentTest, NewPreferenceNeverFallsIntoAForeignSection)
{
    EXPECT_EQ(afterSetting("[x]\nb=2\n", "a", "1"), "a=1\n[x]\nb=2\n");
    EXPECT_EQ(
        afterSetting("# about me\n\n# about x\n[x]\n", "a", "1"), "# about me\na=1\n\n# about x\n[x]\n");
}

TEST(IniDocumentTest, RemovalTakesOutTheLineAlone)
{
    EXPECT_EQ(afterRemoving("# one\na=1\n\n[x]\na=2\n", "a"), "# one\n\n[x]\na=2\n");
    EXPECT_EQ(afterRemoving("a=1\nb=2", "b"), "a=1\n");
    EXPECT_EQ(afterRemoving("a=1", "a"), "");
    EXPECT_EQ(afterRemoving("b=2", "a"), "b=2");
}

TEST(IniDocumentTest, AnyTextUnderAnyKeyComesBack)
{
    for (const std::string& key : {"a"s, ""s, " "s, "[General]"s, "# a"s, "a=b"s,
             "\xEF\xBB\xBF"
             "a"s,
             "\"a"s, "a\nb"s, "\0"s}) {
        for (const std::string& text :
            {"1"s, ""s, " "s, "\""s, "\\"s, "\"1\""s, "a\r\n[b]\r\n"s, "\xC3"s, "\0"s}) {
            const PreferenceDictionary values = valuesIn(afterSetting("[x]\nz=1\n", key, text));
            EXPECT_THAT(values, ElementsAre(Pair(key, PreferenceValue(text))));
        }
    }
}

TEST(IniDocumentTest, DesktopEntryIsReadByItsOwnGroup)
{
    const IniDocument entry("# a comment\n[Other]\nHidden=true\n[Desktop Entry]\n#Hidden=true\n"
                            "Name = Amperly \r\nHidden=false\n[Desktop Action x]\nIcon=y\n");
    EXPECT_EQ(entry.written("Desktop Entry", "Hidden"), "false");
    EXPECT_EQ(entry.written("Desktop Entry", "Name"), "Amperly");
    EXPECT_EQ(entry.written("Desktop Entry", "Icon"), std::nullopt);
    EXPECT_EQ(IniDocument("").written("Desktop Entry", "Name"), std::nullopt);
    EXPECT_EQ(IniDocument("[Desktop Entry]\nName=").written("Desktop Entry", "Name"), "");
    EXPECT_EQ(IniDocument("Name=x").written("Desktop Entry", "Name"), std::nullopt);
}

TEST(IniDocumentTest, QuotesOfAnotherFormatAreLeftToIt)
{
    const IniDocument entry("[Desktop Entry]\nExec=\"/opt/my programs/amperly\"\n");
    EXPECT_EQ(entry.written("Desktop Entry", "Exec"), "\"/opt/my programs/amperly\"");
}

TEST(IniDocumentTest, NestedGroupIsASectionOfItsOwn)
{
    // As KDE nests them; entries below are not those of the section above.
    const IniDocument globals("[KDE]\na=1\n[Colors:Header][Inactive]\na=2\n[KDE][x] # c\na=3\n");
    EXPECT_FALSE(globals.isDamaged());
    EXPECT_EQ(globals.written("KDE", "a"), "1");
    EXPECT_EQ(globals.written("KDE][x", "a"), "3");
}

} // namespace
} // namespace amperly
