#include "ui/second_start.h"

#include "remote/errand.h"
#include "remote/exit_status.h"
#include "ui/fonts.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdio>

namespace corvane {

namespace {

/// The one who started it may see a terminal or a screen.
void tell(const QString &sentence, int argc, char **argv)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(sentence));
    const QApplication application(argc, argv);
    QApplication::setFont(uiFont());
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Corvane"), sentence);
    box.exec();
}

} // namespace

std::optional<int> endSecondStart(remote::Instance &instance, int argc, char **argv)
{
    if (!instance.isTaken()) return std::nullopt;
    const std::optional<QString> trouble = remote::bringForward();
    if (!trouble) return remote::kDone;
    // The other one may have ended by now.
    instance.claim();
    if (!instance.isTaken()) return std::nullopt;
    tell(*trouble, argc, argv);
    return remote::kNoAnswer;
}

} // namespace corvane
