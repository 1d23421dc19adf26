#include "exec/tools.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdlib>

namespace corvane::test {

using namespace Qt::Literals::StringLiterals;

namespace {

void makeFile(const QString &path, bool executable)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const auto readable = QFile::ReadOwner | QFile::WriteOwner;
    ASSERT_TRUE(file.setPermissions(executable ? readable | QFile::ExeOwner : readable));
}

} // namespace

TEST(Tools, The_search_folders_are_these_in_this_order)
{
    EXPECT_EQ(Tools::searchDirs().join(u':'), u"/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin:"
                                              "/Applications/Docker.app/Contents/Resources/bin"_s);
}

TEST(Tools, Find_answers_the_first_executable_file_in_the_order_of_the_folders)
{
    QTemporaryDir first;
    QTemporaryDir second;
    makeFile(second.filePath(u"colima"_s), true);
    EXPECT_EQ(Tools::find(u"colima"_s, {first.path(), second.path()}), second.filePath(u"colima"_s));
    makeFile(first.filePath(u"colima"_s), true);
    EXPECT_EQ(Tools::find(u"colima"_s, {first.path(), second.path()}), first.filePath(u"colima"_s));
    EXPECT_EQ(Tools::find(u"colima"_s, {second.path(), first.path()}), second.filePath(u"colima"_s));
}

TEST(Tools, Find_passes_over_what_cannot_be_executed)
{
    QTemporaryDir first;
    QTemporaryDir second;
    makeFile(first.filePath(u"docker"_s), false);
    makeFile(second.filePath(u"docker"_s), true);
    ASSERT_TRUE(QDir(first.path()).mkdir(u"brew"_s));
    EXPECT_EQ(Tools::find(u"docker"_s, {first.path(), second.path()}), second.filePath(u"docker"_s));
    EXPECT_EQ(Tools::find(u"brew"_s, {first.path()}), std::nullopt);
}

TEST(Tools, Find_follows_a_link_and_passes_over_a_dangling_one)
{
    QTemporaryDir folder;
    makeFile(folder.filePath(u"real"_s), true);
    ASSERT_TRUE(QFile::link(folder.filePath(u"real"_s), folder.filePath(u"link"_s)));
    ASSERT_TRUE(QFile::link(folder.filePath(u"nothing"_s), folder.filePath(u"dangling"_s)));
    EXPECT_EQ(Tools::find(u"link"_s, {folder.path()}), folder.filePath(u"link"_s));
    EXPECT_EQ(Tools::find(u"dangling"_s, {folder.path()}), std::nullopt);
}

TEST(Tools, Find_answers_nothing_where_nothing_is)
{
    EXPECT_EQ(Tools::find(u"no-such-tool"_s, Tools::searchDirs()), std::nullopt);
    EXPECT_EQ(Tools::find(u"sh"_s, {}), std::nullopt);
    EXPECT_EQ(Tools::find(QString(), {u"/bin"_s}), std::nullopt);
}

TEST(Tools, The_environment_is_inherited_but_for_the_path)
{
    qputenv("CORVANE_PROBE", "inherited");
    const auto environment = Tools::environment({});
    qunsetenv("CORVANE_PROBE");
    EXPECT_EQ(environment.value("CORVANE_PROBE"), "inherited");
    EXPECT_EQ(environment.value("PATH"), Tools::searchDirs().join(u':').toUtf8());
}

TEST(Tools, Inherited_variables_keep_their_bytes_in_any_encoding)
{
    const QByteArray latin1("caf\xE9");
    qputenv("CORVANE_PROBE", latin1);
    const auto environment = Tools::environment({});
    qunsetenv("CORVANE_PROBE");
    EXPECT_EQ(environment.value("CORVANE_PROBE"), latin1);
}

/// What a worker does that is still busy when the program ends.
void useSearchDirs()
{
    if (Tools::environment({}).value("PATH").isEmpty()) std::abort();
}

TEST(ToolsDeathTest, Can_be_used_until_the_very_end_of_the_program)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto endWithAWorker = [] {
        std::atexit(useSearchDirs);
        (void)Tools::searchDirs();
        std::exit(0);
    };
    EXPECT_EXIT(endWithAWorker(), testing::ExitedWithCode(0), "");
}

TEST(Tools, Extra_variables_win_over_everything)
{
    qputenv("CORVANE_PROBE", "inherited");
    const auto environment = Tools::environment(
        {{u"CORVANE_PROBE"_s, u"extra"_s}, {u"PATH"_s, u"/mine"_s}, {u"HOMEBREW_NO_ENV_HINTS"_s, u"1"_s}});
    qunsetenv("CORVANE_PROBE");
    EXPECT_EQ(environment.value("CORVANE_PROBE"), "extra");
    EXPECT_EQ(environment.value("PATH"), "/mine");
    EXPECT_EQ(environment.value("HOMEBREW_NO_ENV_HINTS"), "1");
}

} // namespace corvane::test
