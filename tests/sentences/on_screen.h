#pragma once

#include "tests/flows/mac_test.h"
#include "tests/ui/driver.h"
#include "tests/ui/qt_warnings.h"

#include <QFileDialog>
#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>

namespace corvane::test {

/// A question as its window shows it.
struct Question {
    std::string heading;
    std::string message;
    std::string accept;
    std::string reject;

    bool operator==(const Question &) const = default;
};

void PrintTo(const Question &question, std::ostream *out);

/// The real windows before a simulated Mac: what is pressed runs real programs, and what is read is on the screen
/// on which it was pressed. Whatever Qt warns about fails the test.
class OnScreen : public MacTest, protected Driver {
protected:
    OnScreen();
    ~OnScreen() override;
    void TearDown() override;

    /// Puts the Mac into the state and starts the application, with no window open yet.
    void start(const char *state);
    /// The same, and waits until the status has been read.
    void begin(const char *state);
    /// Ends the application, lets that happen, and starts it again.
    void startAgain(const std::function<void()> &meanwhile);
    /// Gives the simulated Mac an order, for example "take-port 8080 tcp"; words that hold blanks are parted by bars.
    static void mac(const char *order);

    /// Opens the main window at a step, 1 to 8, or at the dashboard, and waits for what starts by itself there.
    void openStep(int number);
    void openDashboard();
    void openSettings();
    /// The question when there is one, else the window that was opened last.
    [[nodiscard]] QQuickWindow *window() const override;

    /// Presses the one button with this label.
    void pressButton(const char *label);
    /// Presses the item of the menu-bar menu.
    void chooseInMenu(const char *label);
    [[nodiscard]] QStringList menuItems();
    /// Picks a choice of a pop-up button.
    void pick(const char *picker, const char *choice);
    /// The file panel that is open, which is waited for.
    [[nodiscard]] QFileDialog *filePanel();
    void chooseFile(const QString &path);

    /// Whether exactly this appears on the screen, as a text or as one line of it.
    [[nodiscard]] testing::AssertionResult appears(const char *sentence);
    [[nodiscard]] testing::AssertionResult appear(std::initializer_list<const char *> sentences);
    /// The same for a sentence that goes on in words of the system's, or with what was found.
    [[nodiscard]] testing::AssertionResult appearsWithReason(const char *sentence);
    /// Whether exactly this is asked.
    [[nodiscard]] testing::AssertionResult asks(const Question &question);
    /// Opens a log and selects it, as a person would to copy it: whether this is one of its lines.
    [[nodiscard]] testing::AssertionResult logged(const char *log, const char *line);

    /// Lets the event loop run until the condition holds, or patience ends.
    [[nodiscard]] static bool eventually(const std::function<bool()> &condition);
    /// Waits until nothing is under way.
    void settle();

private:
    struct Views;

    [[nodiscard]] testing::AssertionResult shown(const char *sentence, const std::function<bool(const QString &)> &is);
    void openMain(bool wizard);

    QtWarnings m_warnings;
    std::unique_ptr<Views> m_views;
};

} // namespace corvane::test
