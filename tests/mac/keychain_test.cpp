#include "exec/keychain.h"
#include "tests/mac/played/diary.h"
#include "tests/mac/played/keychain.h"
#include "tests/mac/played/objects.h"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

using played::Diary;

const QString kItem = QStringLiteral("class=genp service=Corvane account=pihole-admin-password");

/// The Mac's keychain, asked through Security.
class MacKeychain : public testing::Test {
protected:
    MacKeychain()
    {
        played::Keychain::clear();
        [[maybe_unused]] const QStringList earlier = Diary::take();
    }
    ~MacKeychain() override { EXPECT_EQ(played::liveObjects(), m_objects) << "each object is released once"; }

private:
    int m_objects = played::liveObjects();
};

TEST_F(MacKeychain, A_save_deletes_the_item_and_adds_it_with_the_password_and_nothing_else)
{
    EXPECT_TRUE(Keychain::save(QStringLiteral("Grüße-7")));
    EXPECT_EQ(Diary::take(), (QStringList{QStringLiteral("SecItemDelete ") + kItem,
                                          QStringLiteral("SecItemAdd ") + kItem + QStringLiteral(" data=Grüße-7")}));
}

TEST_F(MacKeychain, Saving_twice_leaves_one_item_with_the_second_password)
{
    EXPECT_TRUE(Keychain::save(QStringLiteral("first")));
    EXPECT_TRUE(Keychain::save(QStringLiteral("second")));
    EXPECT_EQ(played::Keychain::items(), QStringList{QStringLiteral("genp/Corvane/pihole-admin-password=second")});
}

TEST_F(MacKeychain, A_look_up_asks_for_the_bytes_of_one_item)
{
    EXPECT_TRUE(Keychain::save(QStringLiteral("kept")));
    [[maybe_unused]] const QStringList saving = Diary::take();
    EXPECT_EQ(Keychain::load(), QStringLiteral("kept"));
    EXPECT_EQ(Diary::take(), QStringList{QStringLiteral("SecItemCopyMatching ") + kItem +
                                         QStringLiteral(" returnData=true limit=one")});
}

TEST_F(MacKeychain, What_is_missing_refused_or_no_text_counts_as_absent)
{
    EXPECT_EQ(Keychain::load(), std::nullopt);
    played::Keychain::put("\xff\xfe");
    EXPECT_EQ(Keychain::load(), std::nullopt);
    played::Keychain::put("kept");
    played::Keychain::answerWithText(true);
    EXPECT_EQ(Keychain::load(), std::nullopt) << "no byte buffer";
    played::Keychain::answerWithText(false);
    played::Keychain::refuse(-128);
    EXPECT_EQ(Keychain::load(), std::nullopt) << "the user cancelled";
}

TEST_F(MacKeychain, A_refused_save_says_so)
{
    played::Keychain::refuse(-25293);
    EXPECT_FALSE(Keychain::save(QStringLiteral("lost")));
    EXPECT_TRUE(played::Keychain::items().isEmpty());
}

TEST_F(MacKeychain, Removing_deletes_the_item_and_does_not_mind_when_there_is_none)
{
    played::Keychain::put("kept");
    Keychain::remove();
    Keychain::remove();
    EXPECT_TRUE(played::Keychain::items().isEmpty());
    EXPECT_EQ(Diary::take(),
              (QStringList{QStringLiteral("SecItemDelete ") + kItem, QStringLiteral("SecItemDelete ") + kItem}));
}

} // namespace

} // namespace corvane::test
