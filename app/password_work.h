#pragma once

#include <QCoro/QCoroTask>
#include <QString>

#include <optional>

namespace corvane {

// The keychain, on a worker thread: it may ask its user first, in a window that stands behind others for as long as it
// likes.

/// The saved password; absent when there is none or the keychain does not give it.
[[nodiscard]] QCoro::Task<std::optional<QString>> loadPassword();

/// Whether the keychain took the password.
[[nodiscard]] QCoro::Task<bool> savePassword(QString password);

/// Takes the saved password out of the keychain, if there is one.
[[nodiscard]] QCoro::Task<> removePassword();

} // namespace corvane
