#include "app/completion.h"
#include "app/current_activities.h"
#include "app/flow.h"

#include <QCoro/QCoroTask>
#include <gtest/gtest.h>

#include <expected>
#include <stdexcept>

namespace corvane::test {

namespace {

using Wait = std::shared_ptr<Completion<int>>;

const QString kText = QStringLiteral("long enough to need memory of its own");

QCoro::Task<int> task(Wait wait)
{
    const int value = co_await wait->wait();
    co_return value;
}

/// What flows have done, and how many of their locals live.
struct Record {
    QStringList done;
    int living = 0;
    bool holds = true;
};

class Local {
public:
    explicit Local(Record &record)
        : m_record(record)
    {
        ++m_record.living;
    }
    ~Local() { --m_record.living; }
    Q_DISABLE_COPY_MOVE(Local)

private:
    Record &m_record;
};

/// An object with flows, each of which waits twice.
class Owner : public QObject {
public:
    explicit Owner(Record &record)
        : m_record(record)
    {}

    Flow<> plain(Wait first, Wait second)
    {
        const Local local(m_record);
        const int value = co_await task(first);
        m_record.done << QString::number(value);
        static_cast<void>(co_await second->wait());
        m_record.done << kText;
    }
    Flow<QString> text(Wait first, Wait second)
    {
        const Local local(m_record);
        co_await plain(first, second);
        co_return kText;
    }
    Flow<std::expected<int, QString>> failing(Wait first, Wait second)
    {
        const Local local(m_record);
        const QString inner = co_await text(first, second);
        co_return std::unexpected(inner);
    }
    Flow<> nested(Wait first, Wait second)
    {
        const Local local(m_record);
        const auto failed = co_await failing(first, second);
        m_record.done << failed.error();
    }
    Flow<> bound(Wait first, Wait second)
    {
        const Local local(m_record);
        const std::function<bool()> holds = [this] { return m_record.holds; };
        co_await BoundTo(holds);
        co_await plain(first, second);
        m_record.done << QStringLiteral("bound");
    }
    Flow<QString> boundText(Wait first, Wait second)
    {
        const std::function<bool()> holds = [this] { return m_record.holds; };
        co_await BoundTo(holds);
        const QString value = co_await text(first, second);
        co_return value;
    }
    Flow<> waitsForEnd(Wait first, Wait second)
    {
        co_await bound(first, second);
        m_record.done << QStringLiteral("went on");
    }
    Flow<> waitsForValue(Wait first, Wait second)
    {
        const Local local(m_record);
        const QString value = co_await boundText(first, second);
        m_record.done << value;
    }
    Flow<> throwing(Wait wait)
    {
        static_cast<void>(co_await task(wait));
        throw std::runtime_error("broken");
    }
    Flow<> catching(Wait wait)
    {
        try {
            co_await throwing(wait);
        } catch (const std::runtime_error &failure) {
            m_record.done << QString::fromUtf8(failure.what());
        }
    }
    Flow<> marked(CurrentActivities &activities, Wait first, Wait second)
    {
        std::optional<ActivityMark> mark(std::in_place, activities, Activity::Update);
        co_await boundTo(*mark);
        static_cast<void>(co_await first->wait());
        m_record.done << QStringLiteral("first");
        mark.reset();
        static_cast<void>(co_await second->wait());
        m_record.done << QStringLiteral("second");
    }

private:
    Record &m_record;
};

/// A flow that is no member.
Flow<> ofAnObject(const Owner &, Record &record, Wait wait)
{
    static_cast<void>(co_await task(wait));
    record.done << kText;
}

class FlowTest : public testing::Test {
protected:
    Record record;
    std::unique_ptr<Owner> owner = std::make_unique<Owner>(record);
    Wait first = std::make_shared<Completion<int>>();
    Wait second = std::make_shared<Completion<int>>();
};

} // namespace

TEST_F(FlowTest, Runs_to_its_end_though_nobody_waits)
{
    launch(owner->plain(first, second));
    first->complete(1);
    EXPECT_EQ(record.done, QStringList{QStringLiteral("1")});
    second->complete(2);
    EXPECT_EQ(record.done, (QStringList{QStringLiteral("1"), kText}));
    EXPECT_EQ(record.living, 0);
}

TEST_F(FlowTest, Gives_its_value_to_whoever_waits)
{
    launch(owner->nested(first, second));
    first->complete(1);
    second->complete(2);
    EXPECT_EQ(record.done, (QStringList{QStringLiteral("1"), kText, kText}));
    EXPECT_EQ(record.living, 0);
}

TEST_F(FlowTest, Keeps_its_value_until_it_is_dropped)
{
    const Flow<QString> flow = owner->text(first, second);
    EXPECT_FALSE(flow.isReady());
    first->complete(1);
    second->complete(2);
    EXPECT_TRUE(flow.isReady());
    EXPECT_EQ(QCoro::waitFor(flow), kText);
}

TEST_F(FlowTest, Ends_where_it_waits_when_its_object_has_gone)
{
    launch(owner->nested(first, second));
    const Wait third = std::make_shared<Completion<int>>();
    launch(ofAnObject(*owner, record, third));
    first->complete(1);
    owner.reset();
    second->complete(2);
    third->complete(3);
    EXPECT_EQ(record.done, QStringList{QStringLiteral("1")});
    EXPECT_EQ(record.living, 0);
}

TEST_F(FlowTest, Does_nothing_at_all_when_its_object_goes_at_once)
{
    launch(owner->nested(first, second));
    EXPECT_EQ(record.living, 4);
    owner.reset();
    first->complete(1);
    EXPECT_TRUE(record.done.isEmpty());
    EXPECT_EQ(record.living, 0);
}

TEST_F(FlowTest, Ends_where_what_it_is_bound_to_does_not_hold)
{
    launch(owner->waitsForEnd(first, second));
    record.holds = false;
    first->complete(1);
    second->complete(2);
    EXPECT_EQ(record.done, (QStringList{QStringLiteral("1"), kText, QStringLiteral("went on")}));
    EXPECT_EQ(record.living, 0);
}

TEST_F(FlowTest, Ends_with_the_flow_whose_value_it_waits_for)
{
    launch(owner->waitsForValue(first, second));
    record.holds = false;
    first->complete(1);
    second->complete(2);
    EXPECT_EQ(record.done, (QStringList{QStringLiteral("1"), kText}));
    EXPECT_EQ(record.living, 0);
}

TEST_F(FlowTest, Ends_with_its_mark)
{
    CurrentActivities activities;
    launch(owner->marked(activities, first, second));
    activities.outdate(Activity::Update);
    first->complete(1);
    EXPECT_TRUE(record.done.isEmpty());
    EXPECT_FALSE(activities.underWay());
}

TEST_F(FlowTest, Ends_when_a_newer_run_has_begun_though_its_mark_is_gone)
{
    CurrentActivities activities;
    launch(owner->marked(activities, first, second));
    first->complete(1);
    EXPECT_FALSE(activities.underWay());
    const ActivityMark newer(activities, Activity::Update);
    second->complete(2);
    EXPECT_EQ(record.done, QStringList{QStringLiteral("first")});
}

TEST_F(FlowTest, Hands_an_exception_to_whoever_waits)
{
    launch(owner->catching(first));
    first->complete(1);
    EXPECT_EQ(record.done, QStringList{QStringLiteral("broken")});
}

TEST_F(FlowTest, Ends_the_program_with_an_exception_that_nobody_waits_for)
{
    const auto breakIt = [this] {
        launch(owner->throwing(first));
        first->complete(1);
    };
    EXPECT_DEATH(breakIt(), "A flow ended with an exception: broken");
}

} // namespace corvane::test
