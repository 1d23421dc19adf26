#pragma once

#include "app/app_model.h"
#include "app/wizard_steps.h"
#include "platform/appearance.h"
#include "ui/accent.h"
#include "ui/decisions/badge.h"
#include "ui/row_list.h"

#include <QColor>
#include <QObject>

namespace corvane {

/// Whether something is under way, by its key in the model's `busy`.
#define CORVANE_BUSY(name, key)                                                                                        \
    Q_PROPERTY(bool name READ name NOTIFY busyChanged)                                                                 \
public:                                                                                                                \
    [[nodiscard]] bool name() const                                                                                    \
    {                                                                                                                  \
        static_assert(isBusyKey(key), "the key of an activity");                                                       \
        return m_app.busy().contains(QStringLiteral(key));                                                             \
    }

/// What the views show and allow, decided from the model: every property follows the model's fields.
class Looks : public QObject {
    Q_OBJECT

    // Which actions are under way, by the model's `busy`.
    CORVANE_BUSY(checking, "checks")
    CORVANE_BUSY(testingDocker, "docker")
    CORVANE_BUSY(testingPihole, "pihole")
    CORVANE_BUSY(testingBlocking, "blocking")
    CORVANE_BUSY(loadingServices, "services")
    CORVANE_BUSY(applyingDNS, "applydns")
    CORVANE_BUSY(testingSystem, "system")
    CORVANE_BUSY(restoringDNS, "restoredns")
    CORVANE_BUSY(testingBrowser, "browser")
    CORVANE_BUSY(provingBrowser, "browserproof")
    CORVANE_BUSY(scanningBrowsers, "browsers")
    CORVANE_BUSY(askingForUpdates, "updates")
    CORVANE_BUSY(loadingLog, "logs")
    CORVANE_BUSY(makingReport, "report")
    CORVANE_BUSY(loadingLists, "lists")
    /// The container is being started, stopped or restarted.
    CORVANE_BUSY(controlling, "container")
    CORVANE_DERIVED(Looks, bool, testingAnything)
    /// A start of Colima from the dashboard is running or has failed.
    CORVANE_DERIVED(Looks, bool, startingColima)
    /// The last operation of maintenance moved Pi-hole to another port.
    CORVANE_DERIVED(Looks, bool, movesPort)
    /// The last installation changed what starts Colima.
    CORVANE_DERIVED(Looks, bool, changesAutostart)
    /// The banner says how the start, or the change of the DNS servers, goes.
    CORVANE_DERIVED(Looks, bool, bannerTellsStart)
    CORVANE_DERIVED(Looks, bool, bannerTellsDNS)

    // The dashboard.
    CORVANE_DERIVED(Looks, corvane::Tint::Name, dotTint)
    CORVANE_DERIVED(Looks, QString, pauseLabel)
    CORVANE_DERIVED(Looks, bool, operating)
    CORVANE_DERIVED(Looks, QString, startInPreparation)
    CORVANE_DERIVED(Looks, QString, updateInPreparation)
    CORVANE_DERIVED(Looks, QString, backupUnderWay)
    CORVANE_DERIVED(Looks, bool, canStart)
    CORVANE_DERIVED(Looks, bool, canStopOrRestart)
    CORVANE_DERIVED(Looks, bool, canUpdate)
    CORVANE_DERIVED(Looks, bool, canChangePihole)
    CORVANE_DERIVED(Looks, bool, canRefreshLists)
    CORVANE_DERIVED(Looks, bool, canRemovePihole)
    CORVANE_DERIVED(Looks, bool, hasLog)
    CORVANE_DERIVED(Looks, QString, logTrouble)
    CORVANE_DERIVED(Looks, QString, listsText)
    CORVANE_DERIVED(Looks, QString, listsHint)

    // The set-up.
    CORVANE_DERIVED(Looks, QString, stepPosition)
    CORVANE_DERIVED(Looks, QString, stepView)
    CORVANE_DERIVED(Looks, bool, hasStepBefore)
    CORVANE_DERIVED(Looks, bool, hasStepAfter)
    CORVANE_DERIVED(Looks, bool, returnGoesOn)
    CORVANE_DERIVED(Looks, bool, canSetUpPihole)
    CORVANE_DERIVED(Looks, bool, canChangeDNS)
    CORVANE_DERIVED(Looks, bool, mustPickService)
    CORVANE_DERIVED(Looks, bool, foundNoBrowser)
    CORVANE_DERIVED(Looks, QString, timeZone)
    CORVANE_DERIVED(Looks, bool, webPortTaken)
    CORVANE_DERIVED(Looks, bool, dnsPortTaken)
    CORVANE_DERIVED(Looks, bool, startFailedOnPort)
    CORVANE_DERIVED(Looks, bool, passwordTooShort)
    CORVANE_DERIVED(Looks, bool, passwordHasOtherCharacters)
    CORVANE_DERIVED(Looks, QString, piholeSubtitle)
    CORVANE_DERIVED(Looks, corvane::Badge, dockerBadge)
    CORVANE_DERIVED(Looks, bool, dockerTested)
    CORVANE_DERIVED(Looks, QString, dockerHint)
    CORVANE_DERIVED(Looks, corvane::Badge, systemBadge)
    CORVANE_DERIVED(Looks, QString, systemVerdict)
    CORVANE_DERIVED(Looks, QString, resolverWarning)
    CORVANE_DERIVED(Looks, QString, blockingCounts)
    CORVANE_DERIVED(Looks, QString, serversInUse)
    CORVANE_DERIVED(Looks, QString, browserRuleText)
    CORVANE_DERIVED(Looks, QString, provedBrowsers)
    CORVANE_DERIVED(Looks, QStringList, selectedServices)

    Q_PROPERTY(corvane::RowList *counters READ counters CONSTANT)
    Q_PROPERTY(corvane::RowList *steps READ steps CONSTANT)
    Q_PROPERTY(corvane::RowList *systemChecks READ systemChecks CONSTANT)
    Q_PROPERTY(corvane::RowList *takenPorts READ takenPorts CONSTANT)
    Q_PROPERTY(corvane::RowList *tools READ tools CONSTANT)
    Q_PROPERTY(corvane::RowList *piholeChecks READ piholeChecks CONSTANT)
    Q_PROPERTY(corvane::RowList *blockingRows READ blockingRows CONSTANT)
    Q_PROPERTY(corvane::RowList *services READ services CONSTANT)
    Q_PROPERTY(corvane::RowList *browsers READ browsers CONSTANT)
    Q_PROPERTY(corvane::RowList *outcomes READ outcomes CONSTANT)
    Q_PROPERTY(corvane::RowList *testResults READ testResults CONSTANT)
    Q_PROPERTY(QList<QString> freePorts READ freePorts NOTIFY freePortsChanged)
    Q_PROPERTY(QList<QString> webPorts READ webPorts CONSTANT)
    Q_PROPERTY(QString noWebPortFree READ noWebPortFree CONSTANT)
    Q_PROPERTY(QColor accent READ accent NOTIFY appearanceChanged)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY appearanceChanged)
    Q_PROPERTY(bool increasesContrast READ increasesContrast NOTIFY appearanceChanged)
    Q_PROPERTY(QString fixedFamily READ fixedFamily CONSTANT)

public:
    Looks(AppModel &app, Appearance &appearance);

    [[nodiscard]] RowList *counters() { return &m_counters; }
    [[nodiscard]] RowList *steps() { return &m_steps; }
    [[nodiscard]] RowList *systemChecks() { return &m_systemChecks; }
    [[nodiscard]] RowList *takenPorts() { return &m_takenPorts; }
    [[nodiscard]] RowList *tools() { return &m_tools; }
    [[nodiscard]] RowList *piholeChecks() { return &m_piholeChecks; }
    [[nodiscard]] RowList *blockingRows() { return &m_blockingRows; }
    [[nodiscard]] RowList *services() { return &m_services; }
    [[nodiscard]] RowList *browsers() { return &m_browsers; }
    [[nodiscard]] RowList *outcomes() { return &m_outcomes; }
    [[nodiscard]] RowList *testResults() { return &m_testResults; }

    /// The ports on offer when another program holds the web port.
    [[nodiscard]] QStringList freePorts() const { return m_freePorts; }
    [[nodiscard]] QStringList webPorts() const;
    [[nodiscard]] QString noWebPortFree() const;
    [[nodiscard]] QColor accent() const { return m_appearance.accent(); }
    [[nodiscard]] bool reducesMotion() const { return m_appearance.reducesMotion(); }
    [[nodiscard]] bool increasesContrast() const { return m_appearance.increasesContrast(); }
    [[nodiscard]] QString fixedFamily() const;

    /// Looks again which ports can be offered; others may have been taken or given back.
    Q_INVOKABLE void showPorts();

    Q_INVOKABLE [[nodiscard]] bool contains(const QStringList &names, const QString &name) const
    {
        return names.contains(name);
    }

    Q_INVOKABLE [[nodiscard]] QColor accentFill(const QColor &accent) const { return corvane::accentFill(accent); }
    Q_INVOKABLE [[nodiscard]] QColor accentMark(const QColor &accent, bool dark) const
    {
        return corvane::accentMark(accent, dark);
    }
    Q_INVOKABLE [[nodiscard]] QColor accentTrack(const QColor &accent, bool dark) const
    {
        return corvane::accentTrack(accent, dark);
    }

    Q_INVOKABLE [[nodiscard]] int stepNumber(corvane::WizardStep::Name step) const { return corvane::stepNumber(step); }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void busyChanged();
    void freePortsChanged();
    void appearanceChanged();

private:
    void followBusy();
    void bindPlaces();
    void bindDashboard();
    void bindControls();
    void bindSetUp();
    void followLists();
    void followBrowsers();
    void followOperations();
    void showSteps();

    AppModel &m_app;
    Appearance &m_appearance;
    RowList m_counters;
    RowList m_steps;
    RowList m_systemChecks;
    RowList m_takenPorts;
    RowList m_tools;
    RowList m_piholeChecks;
    RowList m_blockingRows;
    RowList m_services;
    RowList m_browsers;
    RowList m_outcomes;
    RowList m_testResults;
    QStringList m_freePorts;
};

} // namespace corvane
