#include "tests/flows/saved_files.h"
#include "tests/sentences/on_screen.h"
#include "ui/symbol.h"

#include <QDir>

#include <algorithm>

namespace corvane::test {

namespace {

/// The symbols beside the texts, by name.
class Symbols : public OnScreen {
protected:
    /// Whether the symbol comes to be shown somewhere in the item, or in the window.
    [[nodiscard]] bool isShown(const char *symbol, const char *place = nullptr)
    {
        return eventually([&] {
            QQuickItem *root = place ? find(QString::fromLatin1(place)) : window()->contentItem();
            const QList<QQuickItem *> items = root ? itemsOf(root) : QList<QQuickItem *>();
            return std::ranges::any_of(items, [&](const QQuickItem *item) {
                const auto *shown = qobject_cast<const Symbol *>(item);
                return shown && inSight(shown) && shown->name() == QLatin1String(symbol);
            });
        });
    }
};

} // namespace

TEST_F(Symbols, Of_the_header_and_the_sidebar)
{
    begin("stopped");
    openStep(1);
    EXPECT_TRUE(isShown("shield.lefthalf.filled"));
    EXPECT_TRUE(isShown("circle.inset.filled", "step1"));
    EXPECT_TRUE(isShown("circle", "step2"));
    openStep(2);
    EXPECT_TRUE(isShown("checkmark.circle.fill", "step1"));
}

TEST_F(Symbols, Of_checks)
{
    begin("bare");
    openStep(2);
    for (const char *symbol : {"checkmark.circle.fill", "exclamationmark.triangle.fill", "xmark.octagon.fill"})
        EXPECT_TRUE(isShown(symbol, "systemChecks")) << symbol;
    openStep(8);
    EXPECT_TRUE(isShown("circle", "outcomes"));
}

TEST_F(Symbols, Of_tools_and_of_the_docker_test)
{
    begin("homebrew");
    openStep(3);
    EXPECT_TRUE(isShown("checkmark.circle.fill", "tools"));
    EXPECT_TRUE(isShown("circle", "tools"));
    pressButton("Test");
    EXPECT_TRUE(isShown("xmark.octagon.fill", "dockerTestResult"));
    begin("engine");
    openStep(3);
    pressButton("Test");
    EXPECT_TRUE(isShown("checkmark.circle.fill", "dockerTestResult"));
    mac("fault colima late 0.2 --at 1");
    pressButton("Start Colima");
    EXPECT_TRUE(isShown("checkmark.circle.fill", "installLog"));
}

TEST_F(Symbols, Of_warnings)
{
    begin("dead");
    openStep(6);
    EXPECT_TRUE(isShown("exclamationmark.triangle.fill", "deadDNSBanner"));
    begin("running");
    openStep(6);
    click(QStringLiteral("piholeOnlySwitch"));
    EXPECT_TRUE(isShown("exclamationmark.triangle.fill", "stepArea"));
}

TEST_F(Symbols, Of_browsers)
{
    const QString chrome =
        QDir::home().filePath(QStringLiteral("Library/Application Support/Google/Chrome/Local State"));
    begin("running");
    mac("app add com.google.Chrome");
    mac("app add com.brave.Browser");
    openStep(7);
    pressButton("Allow the read-only check");
    EXPECT_TRUE(isShown("questionmark.circle.fill", "browser_chrome")) << "not readable";
    EXPECT_TRUE(isShown("info.circle.fill", "browser_safari")) << "not applicable";
    write(chrome, "{}");
    pressButton("Check again");
    EXPECT_TRUE(isShown("questionmark.circle.fill", "browser_chrome")) << "the default";
    write(chrome, R"({"dns_over_https":{"mode":"secure"}})");
    pressButton("Check again");
    EXPECT_TRUE(isShown("exclamationmark.triangle.fill", "browser_chrome")) << "on";
    write(chrome, R"({"dns_over_https":{"mode":"off"}})");
    pressButton("Check again");
    EXPECT_TRUE(isShown("questionmark.circle.fill", "browser_chrome")) << "off, but this Mac asks no Pi-hole either";
}

} // namespace corvane::test
