#include "app/dns_trouble.h"

#include "runtime/pihole_controller.h"

namespace corvane {

QCoro::Task<DnsTrouble> dnsTroubleBehind(DigResult reply, bool containerRuns)
{
    if (containerRuns && reply.answered()) co_return DnsTrouble::None;
    if (containerRuns && reply.status == u"REFUSED") co_return DnsTrouble::TooManyQuestions;
    // Without a container there is nobody to ask, unless somebody has just answered.
    if (!containerRuns && reply.status.isEmpty()) co_return DnsTrouble::Silent;
    co_return co_await dnsTroubleProven(reply);
}

QCoro::Task<DnsTrouble> dnsTroubleProven(DigResult reply)
{
    const bool replied = !reply.status.isEmpty();
    if (reply.status == u"REFUSED") co_return DnsTrouble::TooManyQuestions;
    const bool isPihole = co_await PiholeController::knowsItsName();
    if (!isPihole) co_return replied ? DnsTrouble::OtherServer : DnsTrouble::Silent;
    if (reply.answered()) co_return DnsTrouble::None;
    co_return !replied || reply.status == u"SERVFAIL" ? DnsTrouble::NothingBehind : DnsTrouble::NameWithheld;
}

QString sentence(DnsTrouble trouble)
{
    switch (trouble) {
    case DnsTrouble::None:
        return {};
    case DnsTrouble::Silent:
        return QStringLiteral("Nothing answers on 127.0.0.1.");
    case DnsTrouble::NothingBehind:
        return QStringLiteral("Pi-hole itself answers, but the DNS server that it asks (1.1.1.1) does not. Check this "
                              "Mac's connection (and any VPN).");
    case DnsTrouble::OldAnswers:
        return QStringLiteral("Pi-hole answers from its memory only: the DNS server that it asks (1.1.1.1) does not "
                              "answer. Check this Mac's connection (and any VPN).");
    case DnsTrouble::TooManyQuestions:
        return QStringLiteral("Pi-hole answers, but refuses: it got more than 1000 questions within a minute, which is "
                              "its limit. It answers again after at most a minute.");
    case DnsTrouble::NameWithheld:
        return QStringLiteral("Pi-hole answers, but has no address for example.com. A list or a rule of Pi-hole may "
                              "block that name.");
    case DnsTrouble::OtherServer:
        break;
    }
    return QStringLiteral("Another DNS server than Pi-hole answers on 127.0.0.1. Stop it, so that Pi-hole can have "
                          "port 53.");
}

} // namespace corvane
