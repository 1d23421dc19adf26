#pragma once

#include <QObject>

namespace corvane {

/// Where the user asked for an action: how it goes is shown there.
class Place : public QObject {
    Q_OBJECT

public:
    enum Name { Dashboard, Banner, Menu, SetUp };
    Q_ENUM(Name)
};

} // namespace corvane
