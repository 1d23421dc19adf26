#include "app/password_work.h"

#include "exec/background.h"
#include "exec/keychain.h"

namespace corvane {

QCoro::Task<std::optional<QString>> loadPassword()
{
    BackgroundWork<std::optional<QString>> work(&Keychain::load);
    const std::optional<QString> password = co_await work;
    co_return password;
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
    co_await work;
}

} // namespace corvane
