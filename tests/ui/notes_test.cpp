#include "tests/ui/screen.h"
#include "tests/ui/states.h"

namespace corvane::test {

namespace {

const QString kNote = QStringLiteral("What is true beside it.");

class Notes : public Screen {
protected:
    void note(const char *about)
    {
        QVariantMap notes = m_app.notes();
        notes.insert(QString::fromLatin1(about), kNote);
        m_app.setNotes(notes);
    }

    void expectNoteAt(int step, const char *about)
    {
        const QString name = QString::fromLatin1(about) + QStringLiteral("Note");
        openStep(step);
        EXPECT_FALSE(shows(name)) << about;
        note(about);
        EXPECT_EQ(textOf(name), kNote) << about;
    }

    void showNoLists()
    {
        showRunning(m_app);
        PiholeSummary summary = *m_app.summary();
        summary.domainsBlocked = 0;
        m_app.setSummary(summary);
    }
};

} // namespace

TEST_F(Notes, Stand_beside_what_each_step_found)
{
    expectNoteAt(3, "pihole");
    expectNoteAt(4, "blocking");
    expectNoteAt(5, "system");
    expectNoteAt(6, "browser");
}

TEST_F(Notes, Stand_beside_the_messages_of_the_dashboard)
{
    openDashboard();
    for (const char *about : {"api", "start", "system"}) {
        const QString name = QString::fromLatin1(about) + QStringLiteral("Note");
        EXPECT_FALSE(shows(name)) << about;
        note(about);
        EXPECT_EQ(textOf(name), kNote) << about;
    }
}

TEST_F(Notes, The_status_says_what_its_colour_leaves_out)
{
    openDashboard();
    showUsedButDead(m_app);
    m_app.setDnsTrouble(DnsTrouble::NothingBehind);
    EXPECT_EQ(textOf(QStringLiteral("statusNote")), sentence(DnsTrouble::NothingBehind));
    EXPECT_EQ(textOf(QStringLiteral("bannerStatusNote")), sentence(DnsTrouble::NothingBehind));
    picture(QStringLiteral("nothing-behind"));
}

TEST_F(Notes, A_pihole_that_starts_is_told_in_place_of_a_warning)
{
    openDashboard();
    showUsedButDead(m_app);
    ASSERT_TRUE(m_app.showDeadDNSBanner());
    m_app.setStatusChecked(false);
    m_app.setStarting(true);
    EXPECT_EQ(textOf(QStringLiteral("statusNote")), QStringLiteral("Pi-hole is starting. It answers in a moment."));
    EXPECT_FALSE(shows(QStringLiteral("startPiholeNowButton")));
    picture(QStringLiteral("starting"));
}

TEST_F(Notes, A_reply_over_UDP_brings_no_help_for_UDP)
{
    openStep(3);
    showPiholeTests(m_app, false);
    ASSERT_TRUE(shows(QStringLiteral("udpHelp")));
    m_app.setUdpReplied(true);
    EXPECT_FALSE(shows(QStringLiteral("udpHelp")));
}

TEST_F(Notes, Empty_lists_are_told_with_the_way_to_load_them)
{
    const QString button = QStringLiteral("loadListsButton");
    for (int step : {4, 7}) {
        openStep(step);
        showRunning(m_app);
        EXPECT_FALSE(shows(button)) << step;
        showNoLists();
        EXPECT_TRUE(shows(button)) << step;
        EXPECT_TRUE(enabled(button)) << step;
        picture(QStringLiteral("no-lists-step-%1").arg(step));
    }
    EXPECT_EQ(textOf(QStringLiteral("statusNote")),
              QStringLiteral("Pi-hole has no block lists, so it blocks nothing."));
    m_app.setBusy({QStringLiteral("lists")});
    EXPECT_FALSE(enabled(button));
    m_app.setBusy({});
    note("lists");
    EXPECT_EQ(textOf(QStringLiteral("listsNote")), kNote);
}

TEST_F(Notes, Are_seen_in_light_and_dark)
{
    for (const bool dark : {false, true}) {
        setDark(dark);
        openDashboard();
        showNoLists();
        m_app.setApiMessage(QStringLiteral("Pi-hole answered with HTTP 429"));
        note("api");
        m_app.setStartMessage(QStringLiteral("Docker reported an error. Open 'Show details' to read it."));
        note("start");
        settle();
        EXPECT_TRUE(shows(QStringLiteral("statusNote")));
        picture(dark ? QStringLiteral("notes-dark") : QStringLiteral("notes-light"));
    }
}

} // namespace corvane::test
