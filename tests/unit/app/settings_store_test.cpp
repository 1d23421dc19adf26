#include "app/settings_store.h"

#include <QCoreApplication>
#include <QMap>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace corvane::test {

namespace {

class Stored final : public SettingsStore {
public:
    Stored() = default;
    Stored(const QString &key, const QVariant &value) { m_values.insert(key, value); }
    [[nodiscard]] QVariant value(const QString &key) const override { return m_values.value(key); }
    void setValue(const QString &key, const QVariant &value) override { m_values.insert(key, value); }

private:
    QMap<QString, QVariant> m_values;
};

int port(const QVariant &stored) { return PersistedSettings::load(Stored(QStringLiteral("webPort"), stored)).webPort; }

bool autostart(const QVariant &stored)
{
    return PersistedSettings::load(Stored(QStringLiteral("autostartColima"), stored)).autostartColima;
}

} // namespace

TEST(Settings, An_empty_store_gives_the_defaults)
{
    const PersistedSettings settings = PersistedSettings::load(Stored());
    EXPECT_EQ(settings.webPort, 8080);
    EXPECT_EQ(settings.pinnedTag.toStdString(), "2026.09.0");
    EXPECT_TRUE(settings.autostartColima);
    EXPECT_FALSE(settings.wizardFinished);
    EXPECT_FALSE(settings.browserReadAllowed);
}

TEST(Settings, Only_ports_from_8080_to_8090_are_kept)
{
    EXPECT_EQ(port(8080), 8080);
    EXPECT_EQ(port(8090), 8090);
    EXPECT_EQ(port(8091), 8080);
    EXPECT_EQ(port(8079), 8080);
    EXPECT_EQ(port(80), 8080);
    EXPECT_EQ(port(0), 8080);
    EXPECT_EQ(port(-1), 8080);
    EXPECT_EQ(port(QStringLiteral("rubbish")), 8080);
    EXPECT_EQ(port(QByteArray("\xff\xfe")), 8080);
}

TEST(Settings, A_stored_false_turns_autostart_off_and_rubbish_does_not)
{
    EXPECT_FALSE(autostart(false));
    EXPECT_TRUE(autostart(true));
    EXPECT_FALSE(autostart(QStringLiteral("false"))) << "text stores keep the word";
    EXPECT_TRUE(autostart(QStringLiteral("perhaps")));
    EXPECT_TRUE(autostart(0)) << "a number is no boolean";
}

TEST(Settings, The_systems_store_gives_back_what_it_was_given)
{
    const QTemporaryDir folder;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    QCoreApplication::setOrganizationName(QStringLiteral("corvane-test"));
    QCoreApplication::setApplicationName(QStringLiteral("Corvane"));
    const auto store = systemSettingsStore();
    store->setValue(QStringLiteral("webPort"), 8085);
    store->setValue(QStringLiteral("pinnedTag"), QStringLiteral("2026.10.1"));
    store->setValue(QStringLiteral("autostartColima"), false);
    store->setValue(QStringLiteral("wizardFinished"), true);
    const PersistedSettings settings = PersistedSettings::load(*systemSettingsStore());
    EXPECT_EQ(settings.webPort, 8085);
    EXPECT_EQ(settings.pinnedTag.toStdString(), "2026.10.1");
    EXPECT_FALSE(settings.autostartColima);
    EXPECT_TRUE(settings.wizardFinished);
}

} // namespace corvane::test
