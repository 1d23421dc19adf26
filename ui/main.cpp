#include "ui/corvane_app.h"

#include <QApplication>

int main(int argc, char **argv)
{
    QApplication::setOrganizationName(QStringLiteral("Corvane"));
    QApplication::setApplicationName(QStringLiteral("Corvane"));
    QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
    QApplication application(argc, argv);
    corvane::CorvaneApp corvane;
    corvane.start();
    return QApplication::exec();
}
