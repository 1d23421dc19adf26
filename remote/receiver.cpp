#include "remote/receiver.h"

#include "app/flow.h"
#include "remote/exit_status.h"
#include "remote/status_facts.h"

namespace corvane::remote {

namespace {

using Kind = Request::Kind;

const QString kRestoresAlready =
    QStringLiteral("The old DNS settings are being restored already. See Corvane's window.");

void answer(const QPointer<Conversation> &asker, bool done, const QString &text)
{
    if (asker) asker->end({done ? kDone : kNotDone, text});
}

} // namespace

Receiver::Receiver(AppModel &app, std::function<void()> comeForward)
    : m_app(app)
    , m_comeForward(std::move(comeForward))
    , m_listener([this](const Request &request, Conversation *asker) { receive(request, asker); })
{}

void Receiver::receive(const Request &request, Conversation *asker)
{
    switch (request.kind) {
    case Kind::Show:
        m_comeForward();
        return asker->end({kDone, {}});
    case Kind::Status:
        return asker->end(statusOf(m_app));
    case Kind::Pause:
        asker->begin({});
        return launch(pause(asker, request.length));
    case Kind::Resume:
        asker->begin({});
        return launch(resume(asker));
    case Kind::RestoreDns:
        m_comeForward();
        if (m_app.restoresOldSettings()) return asker->end({kNotDone, kRestoresAlready});
        asker->begin(QStringLiteral("Corvane asks you in its window."));
        return launch(restoreDns(asker));
    }
}

Flow<> Receiver::pause(Asker asker, std::chrono::seconds length)
{
    co_await m_app.pauseBlocking(length);
    answer(asker, m_app.apiMessage().startsWith(AppModel::kPaused), m_app.apiMessage());
}

Flow<> Receiver::resume(Asker asker)
{
    co_await m_app.resumeBlocking();
    answer(asker, m_app.apiMessage() == AppModel::kResumed, m_app.apiMessage());
}

Flow<> Receiver::restoreDns(Asker asker)
{
    m_app.setNotice({});
    m_app.setDnsMessage({});
    co_await m_app.restoreOldSettings(Place::Dashboard);
    const bool done = m_app.notice() == AppModel::kRestored;
    QStringList said{done ? m_app.notice() : QString(), m_app.dnsMessage()};
    said.removeAll(QString());
    answer(asker, done, said.isEmpty() ? QStringLiteral("Nothing was changed.") : said.join(u'\n'));
}

} // namespace corvane::remote
