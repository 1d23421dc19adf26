#include "platform/workspace.h"
#include "tests/mac/played/diary.h"
#include "tests/mac/played/mac.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using played::Diary;
using played::Mac;

/// The Mac's desktop.
class MacWorkspace : public testing::Test {
protected:
    MacWorkspace()
    {
        Mac::opens = true;
        Mac::hidden = false;
        Mac::windows.clear();
        [[maybe_unused]] const QStringList earlier = Diary::take();
    }

    std::unique_ptr<Workspace> m_workspace = systemWorkspace();
};

TEST_F(MacWorkspace, An_address_is_opened_and_what_the_system_says_is_passed_on)
{
    EXPECT_TRUE(m_workspace->open(QUrl(QStringLiteral("http://127.0.0.1:8080/admin"))));
    EXPECT_EQ(Diary::take(), QStringList{QStringLiteral("open http://127.0.0.1:8080/admin")});
    Mac::opens = false;
    EXPECT_FALSE(m_workspace->open(QUrl(QStringLiteral("https://brew.sh"))));
}

TEST_F(MacWorkspace, What_is_no_address_is_not_opened)
{
    EXPECT_FALSE(m_workspace->open(QUrl(QStringLiteral("http://[broken"))));
    EXPECT_TRUE(Diary::take().isEmpty());
}

TEST_F(MacWorkspace, An_application_is_found_by_its_identifier)
{
    Mac::installed = QStringLiteral("org.mozilla.firefox");
    EXPECT_TRUE(m_workspace->hasApplication(QStringLiteral("org.mozilla.firefox")));
    EXPECT_FALSE(m_workspace->hasApplication(QStringLiteral("com.google.Chrome")));
}

TEST_F(MacWorkspace, Coming_to_the_front_brings_the_windows_that_a_user_sees)
{
    Mac::windows = {{QStringLiteral("main"), true, true},
                    {QStringLiteral("closed"), false, true},
                    {QStringLiteral("status item"), true, false}};
    m_workspace->activate();
    EXPECT_EQ(Diary::take(), (QStringList{QStringLiteral("activate"), QStringLiteral("in front: main")}));
}

TEST_F(MacWorkspace, A_hidden_application_is_shown_first)
{
    Mac::hidden = true;
    m_workspace->activate();
    EXPECT_EQ(Diary::take(), (QStringList{QStringLiteral("unhide"), QStringLiteral("activate")}));
}

TEST_F(MacWorkspace, A_secret_is_copied_with_the_mark_that_asks_others_not_to_keep_it)
{
    m_workspace->copySecretToClipboard(QStringLiteral("correct-horse-9"));
    EXPECT_EQ(Diary::take(), (QStringList{QStringLiteral("clear"), QStringLiteral("text: correct-horse-9"),
                                          QStringLiteral("org.nspasteboard.ConcealedType: ")}));
}

} // namespace

} // namespace corvane::test
