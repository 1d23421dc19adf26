// The least that a program with one Qt Quick window is: what Corvane's memory is measured beside.

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQuickView view(&engine, nullptr);
    view.setTitle(QStringLiteral("Bare window"));
    view.resize(980, 720);
    view.show();
    return QGuiApplication::exec();
}
