#pragma once

#include "app/flow.h"

#include <QCoro/QCoroTask>
#include <QString>

namespace corvane {

class AppModel;

// The keychain, on a worker thread: it may ask its user first, in a window that is behind others for as long as it
// likes.

/// Gives the model the saved password as soon as the keychain does, unless it has one by then; an empty one when there
/// is none or the keychain refuses.
[[nodiscard]] Flow<> readPassword(AppModel &model);

/// From now on this is the model's password, whatever the keychain may still answer.
void takePassword(AppModel &model, const QString &password);

/// Whether the keychain took the password.
[[nodiscard]] QCoro::Task<bool> savePassword(QString password);

/// Takes the saved password out of the keychain, if there is one.
[[nodiscard]] QCoro::Task<> removePassword();

} // namespace corvane
