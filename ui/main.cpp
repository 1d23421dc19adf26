#include "remote/errand.h"
#include "ui/corvane_app.h"
#include "ui/second_start.h"

#include <QApplication>

namespace {

QByteArrayList wordsBehind(int argc, char **argv)
{
    QByteArrayList words;
    for (int i = 1; i < argc; ++i)
        words += argv[i];
    return words;
}

} // namespace

int main(int argc, char **argv)
{
    using corvane::remote::CommandLine;

    QApplication::setOrganizationName(QStringLiteral("Corvane"));
    QApplication::setApplicationName(QStringLiteral("Corvane"));
    QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
    const CommandLine line = CommandLine::of(wordsBehind(argc, argv));
    if (line.wish != CommandLine::Wish::Open)
        return corvane::remote::runErrand(line, QApplication::applicationVersion(), {});

    corvane::remote::Instance instance;
    if (const auto status = corvane::endSecondStart(instance, argc, argv)) return *status;
    QApplication application(argc, argv);
    corvane::CorvaneApp corvane;
    corvane.start();
    return QApplication::exec();
}
