#include "app/app_model.h"
#include "app/docker_words.h"
#include "app/password_work.h"
#include "dns/dns_configurator.h"
#include "facts/container_name.h"
#include "runtime/docker_cli.h"
#include "runtime/machine_port.h"
#include "runtime/pihole_controller.h"

#include <QFile>

#include <algorithm>

namespace corvane {

namespace {

constexpr std::chrono::seconds kRemoveTimeout{60};
constexpr std::chrono::seconds kRemoveVolumesTimeout{30};

Alert removalQuestion()
{
    Alert alert;
    alert.title = QStringLiteral("Remove Pi-hole?");
    alert.text = QStringLiteral("This removes the container 'pihole' and its two data volumes 'pihole_etc' and "
                                "'pihole_dnsmasq'. Your saved DNS settings are restored first (administrator prompt). "
                                "Colima and Docker stay installed.");
    alert.accept = QStringLiteral("Remove Pi-hole");
    alert.reject = QStringLiteral("Cancel");
    alert.style = Alert::Style::Warning;
    return alert;
}

/// Whether what was to be removed is not there any more: removed now, or earlier.
bool isGone(const CommandResult &removal)
{
    if (removal.succeeded()) return true;
    const QStringList errors = removal.standardError.split(u'\n', Qt::SkipEmptyParts);
    return !removal.timedOut && !errors.isEmpty() && std::ranges::all_of(errors, [](const QString &error) {
        return error.contains(QLatin1String("no such volume"), Qt::CaseInsensitive) ||
               error.contains(QLatin1String("no such container"), Qt::CaseInsensitive);
    });
}

/// Why something is left, as a sentence; empty when nothing is.
QString whatIsLeft(const CommandResult &removal)
{
    if (isGone(removal)) return {};
    if (removal.launchError) return *removal.launchError + u'.';
    return whyDockerFailed(removal);
}

} // namespace

Flow<> AppModel::removePihole()
{
    if (!mayBegin(Activity::Removal, &AppModel::setNotice)) co_return;
    ActivityMark mark(m_activities, Activity::Removal, ActivityMark::Begin::WhenAgreed);
    co_await boundTo(mark);
    const Alert question = removalQuestion();
    const bool accepted = co_await m_dialogs.confirm(question);
    if (!accepted) co_return;

    mark.agreed();
    m_comeback.setStoppedByUser(true);
    setNotice({});
    const DNSRestore restored = co_await DNSConfigurator::restoreForRemoval();
    if (restored.failure) {
        setNotice(QStringLiteral("Pi-hole was not removed because your DNS could not be restored: ") +
                  *restored.failure);
        co_return;
    }
    co_await dropBrowserRule();
    co_await removeContainer();
    setDnsMessage(restored.remark);
    co_await loadServices();
    co_await refreshStatus(Stats::Leave);
}

Flow<> AppModel::removeContainer()
{
    const QStringList removal{QStringLiteral("rm"), QStringLiteral("-f"), kContainerName};
    const CommandResult container = co_await DockerCLI::run(removal, kRemoveTimeout);
    const QStringList volumeRemoval{QStringLiteral("volume"), QStringLiteral("rm"), kSettingsVolume, kDnsmasqVolume};
    const CommandResult volumes = co_await DockerCLI::run(volumeRemoval, kRemoveVolumesTimeout);
    if (isGone(container)) co_await MachinePort::giveRoomBack();

    QFile::remove(PiholeController::composeFile());
    QFile::remove(PiholeController::environmentFile());
    co_await removePassword();
    forgetPihole();
    const QString left = isGone(container) ? whatIsLeft(volumes) : whatIsLeft(container);
    setNotice(left.isEmpty() ? QStringLiteral("Pi-hole was removed.")
                             : QStringLiteral("Docker could not remove everything: ") + left);
}

/// What was known about the Pi-hole that is gone; the wizard begins again.
void AppModel::forgetPihole()
{
    m_activities.outdate(Activity::Checks | Activity::DockerTest | Activity::PiholeTests | Activity::BlockingTest |
                         Activity::SystemTest | Activity::BrowserTest | Activity::BrowserProof);
    takePassword(*this, {});
    setPasswordInput({});
    setOutcomes({});
    setPiholeChecks({});
    setBlockingTest(std::nullopt);
    setHistory(std::nullopt);
    setHistoryProblem({});
    setTopBlocked(std::nullopt);
    setSystemChecks({});
    setPortReports({});
    setStartMessage({});
    setDnsMessage({});
    setApiMessage({});
    setSummary(std::nullopt);
    setBlocking(std::nullopt);
    setSystemTestDetail({});
    setBrowserTestDetail({});
    setBrowserProofs({});
    setUdpProblem(false);
    setTcpWorks(false);
    setGrpcFlagSupported(false);
    m_left.forget();
    m_newPassword.end();
    m_compared.reset();
    setWayBack({});
    setNotes({});
    endWatch();
    setLatestTag(std::nullopt);
    setUpdateMessage({});
    setWizardFinished(false);
    setShowWizard(true);
    setVisited({});
    go(0);
}

} // namespace corvane
