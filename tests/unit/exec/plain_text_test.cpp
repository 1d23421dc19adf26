#include "exec/plain_text.h"

#include <gtest/gtest.h>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

TEST(PlainLine, Leaves_ordinary_text_alone)
{
    for (const QString &line : {u""_s, u"  [✓] DNS resolution is available"_s, u"a\tb"_s, u"[K is not a sequence"_s})
        EXPECT_EQ(plainLine(line), line);
}

TEST(PlainLine, Loses_colours_and_movements)
{
    EXPECT_EQ(plainLine(u"\u001B[K  [✓] Preparing new gravity database"_s), u"  [✓] Preparing new gravity database"_s);
    EXPECT_EQ(plainLine(u"\u001B[34m==>\u001B[0m \u001B[1mInstalling\u001B[22;39m"_s), u"==> Installing"_s);
    EXPECT_EQ(plainLine(u"\u001B[?25l\u001B[2Aup\u001B[10;20H!"_s), u"up!"_s);
    EXPECT_EQ(plainLine(u"\u001B]0;a title\u0007text\u001B]8;;http://x\u001B\\link"_s), u"textlink"_s);
    EXPECT_EQ(plainLine(u"\u001B(Bplain\u001B7\u001Bc"_s), u"plain"_s);
}

TEST(PlainLine, Loses_other_control_characters)
{
    EXPECT_EQ(plainLine(u"a\u0007b\u0008c\u007Fd\u009Be"_s), u"abcde"_s);
    EXPECT_EQ(plainLine(QString(u"x"_s + QChar::Null + u"y"_s)), u"xy"_s);
}

TEST(PlainLine, Survives_a_sequence_that_breaks_off)
{
    for (const QString &line : {u"a\u001B"_s, u"a\u001B["_s, u"a\u001B[3"_s, u"a\u001B]0;title"_s, u"a\u001B("_s})
        EXPECT_EQ(plainLine(line), u"a"_s);
    EXPECT_EQ(plainLine(u"\u001B[3\u001B[Kb"_s), u"b"_s);
    EXPECT_EQ(plainLine(u"\u001B[1é"_s), u"é"_s) << "no letter ends it";
}

TEST(PlainText, Is_cut_into_lines_where_a_terminal_begins_anew)
{
    EXPECT_EQ(plainText(u"  [i] Preparing...\r\u001B[K  [✓] Preparing\r\nnext\n"_s),
              u"  [i] Preparing...\n  [✓] Preparing\nnext"_s);
    EXPECT_EQ(plainText(QString()), QString());
}

} // namespace corvane::test
