#include "ui/fonts.h"

#include <QAccessible>
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setFont(corvane::uiFont());
    QAccessible::setActive(true);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
