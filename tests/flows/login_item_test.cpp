#include "tests/flows/flow_test.h"
#include "tests/flows/saved_files.h"

#include <QCoreApplication>
#include <QDir>

namespace corvane::test {

namespace {

class LoginSwitch : public FlowTest {
protected:
    LoginSwitch()
        : FlowTest(QStringLiteral("bare"))
    {}

    static QString entry() { return QDir::home().filePath(QStringLiteral(".config/autostart/corvane.desktop")); }
};

/// A system that says yes and does otherwise.
class WaitingForApproval final : public LoginItem {
public:
    [[nodiscard]] Status status() const override { return Status::RequiresApproval; }
    std::expected<void, QString> setEnabled(bool) override { return {}; }
};

} // namespace

TEST_F(LoginSwitch, On_is_what_the_system_says_afterwards)
{
    EXPECT_FALSE(model().launchAtLogin());
    model().setLaunchAtLogin(true);
    EXPECT_TRUE(model().launchAtLogin());
    EXPECT_TEXT(model().notice(), "");
    const QByteArray text = contentOf(entry());
    EXPECT_TRUE(text.contains("\nType=Application\n")) << text.constData();
    EXPECT_TRUE(text.contains(QCoreApplication::applicationFilePath().toUtf8())) << text.constData();
    relaunch();
    EXPECT_TRUE(model().launchAtLogin());

    model().setLaunchAtLogin(false);
    EXPECT_FALSE(model().launchAtLogin());
    EXPECT_FALSE(QFile::exists(entry()));
    relaunch();
    EXPECT_FALSE(model().launchAtLogin());
}

TEST_F(LoginSwitch, Twice_the_same_is_no_failure)
{
    model().setLaunchAtLogin(false);
    EXPECT_TEXT(model().notice(), "");
    model().setLaunchAtLogin(true);
    model().setLaunchAtLogin(true);
    EXPECT_TEXT(model().notice(), "");
    EXPECT_TRUE(model().launchAtLogin());
}

TEST_F(LoginSwitch, A_refusal_is_told_and_the_switch_stays_off)
{
    write(QDir::home().filePath(QStringLiteral(".config/autostart")), "a file in the folder's place");
    model().setLaunchAtLogin(true);
    EXPECT_FALSE(model().launchAtLogin());
    EXPECT_TRUE(model().notice().startsWith(QStringLiteral("Could not change launch at login: ")))
        << model().notice().toStdString();
    EXPECT_GT(model().notice().size(), 38);

    QFile::remove(QDir::home().filePath(QStringLiteral(".config/autostart")));
    model().setLaunchAtLogin(true);
    EXPECT_TRUE(model().launchAtLogin());
    EXPECT_TEXT(model().notice(), "") << "the old refusal is gone";
}

TEST_F(LoginSwitch, What_was_changed_outside_shows_at_the_next_start)
{
    model().setLaunchAtLogin(true);
    QFile::remove(entry());
    relaunch();
    EXPECT_FALSE(model().launchAtLogin());
}

TEST_F(LoginSwitch, A_change_that_waits_for_approval_is_not_on)
{
    loginItem = std::make_unique<WaitingForApproval>();
    relaunch();
    model().setLaunchAtLogin(true);
    EXPECT_FALSE(model().launchAtLogin());
}

} // namespace corvane::test
