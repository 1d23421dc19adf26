#include "app/password_work.h"

#include "app/app_model.h"
#include "exec/background.h"
#include "exec/keychain.h"

namespace corvane {

Flow<> readPassword(AppModel &model)
{
    BackgroundWork<std::optional<QString>> work(&Keychain::load);
    const std::optional<QString> saved = co_await work;
    if (model.passwordKnown()) co_return;
    takePassword(model, saved.value_or(QString()));
    // An answer that came late is shown at once.
    if (model.statusChecked() && model.answering() && saved) co_await model.refreshStats();
}

void takePassword(AppModel &model, const QString &password)
{
    model.setAdminPassword(password);
    model.publishPasswordKnown(true);
    model.configureAPI();
}

QCoro::Task<bool> savePassword(QString password)
{
    const std::function<bool()> save = [password] { return Keychain::save(password); };
    BackgroundWork<bool> work(save);
    const bool saved = co_await work;
    co_return saved;
}

QCoro::Task<> removePassword()
{
    const std::function<bool()> remove = [] {
        Keychain::remove();
        return true;
    };
    BackgroundWork<bool> work(remove);
    [[maybe_unused]] const bool removed = co_await work;
}

} // namespace corvane
