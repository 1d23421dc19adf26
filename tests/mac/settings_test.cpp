#include "platform/user_settings.h"
#include "tests/mac/played/diary.h"
#include "tests/mac/played/objects.h"
#include "tests/mac/played/preferences.h"

#include <gtest/gtest.h>

namespace corvane::platform {

namespace {

using played::Diary;
using played::Preferences;

const QString kDomain = QStringLiteral("this application/this user/any host");

/// The Mac's own store of settings.
class MacSettings : public testing::Test {
protected:
    MacSettings()
    {
        Preferences::clear();
        [[maybe_unused]] const QStringList earlier = Diary::take();
    }
    ~MacSettings() override { EXPECT_EQ(played::liveObjects(), m_objects) << "each object is released once"; }

    /// What is read where the store holds this.
    static QVariant readBack(PlayedObject *stored)
    {
        Preferences::put(kDomain + QStringLiteral("/key"), stored);
        return userSetting(QStringLiteral("key"));
    }

private:
    int m_objects = played::liveObjects();
};

TEST_F(MacSettings, A_setting_is_written_at_once_for_this_user_and_this_application)
{
    setUserSetting(QStringLiteral("webPort"), 8083);
    EXPECT_EQ(Diary::take(),
              (QStringList{QStringLiteral("set %1/webPort %2=8083").arg(kDomain).arg(PlayedObject::Number),
                           QStringLiteral("synchronize ") + kDomain}));
}

TEST_F(MacSettings, Each_setting_keeps_its_type)
{
    setUserSetting(QStringLiteral("webPort"), 8083);
    setUserSetting(QStringLiteral("pinnedTag"), QStringLiteral("2026.10.0"));
    setUserSetting(QStringLiteral("wizardFinished"), true);
    setUserSetting(QStringLiteral("autostartColima"), false);
    EXPECT_EQ(userSetting(QStringLiteral("webPort")), QVariant(8083));
    EXPECT_EQ(userSetting(QStringLiteral("pinnedTag")), QVariant(QStringLiteral("2026.10.0")));
    EXPECT_EQ(userSetting(QStringLiteral("wizardFinished")), QVariant(true));
    EXPECT_EQ(userSetting(QStringLiteral("autostartColima")), QVariant(false));
}

TEST_F(MacSettings, A_time_after_the_year_2038_is_kept)
{
    setUserSetting(QStringLiteral("pauseEnd"), qlonglong{2'200'000'000});
    EXPECT_EQ(userSetting(QStringLiteral("pauseEnd")).toLongLong(), 2'200'000'000);
}

TEST_F(MacSettings, What_was_never_stored_or_is_of_another_kind_is_invalid)
{
    EXPECT_FALSE(userSetting(QStringLiteral("webPort")).isValid());
    EXPECT_FALSE(readBack(played::lasting(PlayedObject::Bytes, "rubbish")).isValid());
    EXPECT_FALSE(readBack(played::lasting(PlayedObject::Number, "8080.5", 8080)).isValid()) << "a fraction";
}

TEST_F(MacSettings, What_belongs_to_the_whole_system_does_not_count)
{
    Preferences::put(QStringLiteral("every application/this user/any host/webPort"),
                     played::lasting(PlayedObject::Number, {}, 8085));
    EXPECT_FALSE(userSetting(QStringLiteral("webPort")).isValid());
}

} // namespace

} // namespace corvane::platform
