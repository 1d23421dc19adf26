#include "remote/answer.h"

#include <gtest/gtest.h>

namespace corvane::remote {
namespace {

TEST(Answer, Is_read_as_it_was_written)
{
    const QString text = QStringLiteral("Two\nlines, \"quoted\" \\ ü 🙂");
    for (const Answer &answer : {Answer{std::nullopt, {}}, Answer{std::nullopt, text}, Answer{0, text},
                                 Answer{255, {}, {{QStringLiteral("dot"), QStringLiteral("red")}}}}) {
        const QByteArray line = encode(answer);
        EXPECT_EQ(line.count('\n'), 1) << "one line";
        EXPECT_EQ(decodeAnswer(line.chopped(1)), answer);
    }
}

TEST(Answer, Is_none_in_other_words)
{
    for (const char *line :
         {"", "ok", "[]", "{}", "{\"text\":5}", "{\"text\":\"a\",\"status\":\"0\"}", "{\"text\":\"a\",\"status\":-1}",
          "{\"text\":\"a\",\"status\":256}", "{\"text\":\"a\",\"status\":null}", "{\"text\":\"a\"", "\xff\xfe"})
        EXPECT_FALSE(decodeAnswer(line)) << line;
}

} // namespace
} // namespace corvane::remote
