#pragma once

#include "app/app_model.h"

namespace corvane::test {

/// A day that Corvane has seen: the file that holds it, written before the model that reads it is made.
class SeenDay {
public:
    SeenDay();
};

/// Pi-hole's part of a day: `hours` of questions that end now, and the names blocked most.
void showHistory(AppModel &app, int hours);

} // namespace corvane::test
