#include "ui/corvane_app.h"

#include <QApplication>

int main(int argc, char **argv)
{
    // On a Mac, domain and name make up the bundle identifier, under which the settings are kept.
    QApplication::setOrganizationDomain(QStringLiteral("corvane.app"));
    QApplication::setOrganizationName(QStringLiteral("Corvane"));
    QApplication::setApplicationName(QStringLiteral("Corvane"));
    QApplication::setApplicationVersion(QStringLiteral(CORVANE_VERSION));
    QApplication application(argc, argv);
    corvane::CorvaneApp corvane;
    corvane.start();
    return QApplication::exec();
}
