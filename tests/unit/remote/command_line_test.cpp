#include "remote/command_line.h"

#include <gtest/gtest.h>

namespace corvane::remote {
namespace {

using Kind = Request::Kind;
using Wish = CommandLine::Wish;
using std::chrono::seconds;

CommandLine asks(Kind kind, seconds length = {}, bool json = false) { return {Wish::Ask, {kind, length}, json}; }

TEST(CommandLine, Without_words_opens_Corvane)
{
    EXPECT_EQ(CommandLine::of({}), CommandLine());
    EXPECT_EQ(CommandLine().wish, Wish::Open);
}

TEST(CommandLine, Leaves_the_systems_own_options_alone)
{
    for (const char *option : {"-psn_0_12345", "-platform", "-AppleLanguages", "-"})
        EXPECT_EQ(CommandLine::of({option, "offscreen"}).wish, Wish::Open) << option;
}

TEST(CommandLine, Names_what_is_asked_for)
{
    EXPECT_EQ(CommandLine::of({"status"}), asks(Kind::Status));
    EXPECT_EQ(CommandLine::of({"status", "--json"}), asks(Kind::Status, {}, true));
    EXPECT_EQ(CommandLine::of({"pause", "90s"}), asks(Kind::Pause, seconds(90)));
    EXPECT_EQ(CommandLine::of({"resume"}), asks(Kind::Resume));
    EXPECT_EQ(CommandLine::of({"restore-dns"}), asks(Kind::RestoreDns));
    EXPECT_EQ(CommandLine::of({"--help"}).wish, Wish::Help);
    EXPECT_EQ(CommandLine::of({"-h"}).wish, Wish::Help);
    EXPECT_EQ(CommandLine::of({"--version"}).wish, Wish::Version);
}

TEST(CommandLine, Says_what_it_does_not_know)
{
    const std::pair<QByteArrayList, const char *> cases[] = {
        {{"stats"}, "Corvane does not know the word \"stats\"."},
        {{"--verbose"}, "Corvane does not know the word \"--verbose\"."},
        {{""}, "Corvane does not know the word \"\"."},
        {{"status", "--xml"}, "Corvane does not know the word \"--xml\"."},
        {{"status", "--json", "now"}, "Corvane does not know the word \"now\"."},
        {{"resume", "--json"}, "Corvane does not know the word \"--json\"."},
        {{"evil\x1b[2J\n"}, "Corvane does not know the word \"evil\"."},
        {{"pause"}, "Say how long, for example \"pause 30s\", \"pause 5m\" or \"pause 1h\"; at most 24h."},
        {{"pause", "5"}, "Say how long, for example \"pause 30s\", \"pause 5m\" or \"pause 1h\"; at most 24h."},
        {{"pause", "25h"}, "Say how long, for example \"pause 30s\", \"pause 5m\" or \"pause 1h\"; at most 24h."},
        {{"pause", "5m", "5m"}, "Say how long, for example \"pause 30s\", \"pause 5m\" or \"pause 1h\"; at most 24h."},
    };
    for (const auto &[words, mistake] : cases) {
        const CommandLine line = CommandLine::of(words);
        EXPECT_EQ(line.wish, Wish::Nothing) << mistake;
        EXPECT_EQ(line.mistake.toStdString(), mistake);
    }
}

TEST(CommandLine, Tells_of_every_command_and_every_exit_status)
{
    const QString help = CommandLine::help();
    for (const char *word :
         {"status", "--json", "pause", "resume", "restore-dns", "--help", "--version", "0 green", "1 orange", "2 red",
          "3 gray", "4 gray", "5 Corvane is not running", "6 it does not answer", "64 wrong use"})
        EXPECT_TRUE(help.contains(QString::fromLatin1(word))) << word;
}

} // namespace
} // namespace corvane::remote
