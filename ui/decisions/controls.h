#pragma once

#include "app/activity.h"
#include "runtime/container_state.h"

#include <QSet>
#include <QString>

#include <optional>

namespace corvane {

/// Whether an operation runs, is being prepared or is being wound up; most buttons are off meanwhile.
[[nodiscard]] bool operating(bool operationRuns, Activities underWay);

/// What is being done before an operation shows its steps, for the line beside the button that began it; empty when
/// nothing is.
[[nodiscard]] QString startInPreparation(Activities underWay, bool operationRuns);
[[nodiscard]] QString updateInPreparation(Activities underWay, bool operationRuns);
[[nodiscard]] QString backupUnderWay(Activities underWay);

/// Which everyday buttons can be pressed. `operating`: an operation runs, or the container is being changed already.
[[nodiscard]] bool canStart(const ContainerState &container, bool operating);
[[nodiscard]] bool canStopOrRestart(const ContainerState &container, bool operating);

/// Whether what changes the container, or needs it left alone, may begin.
[[nodiscard]] bool canChangePihole(bool operating, bool controlling);
[[nodiscard]] bool canRefreshLists(bool canChangePihole, bool answering);
/// Whether the set-up can start Pi-hole with this password.
[[nodiscard]] bool canSetUpPihole(bool operating, bool dockerWorks, const QString &password);
[[nodiscard]] bool canRemovePihole(bool operating, bool applyingDns);

/// Whether the servers of the chosen services may be changed, and whether one has to be chosen first.
[[nodiscard]] bool canChangeDns(const QSet<QString> &chosen, bool restoring);
[[nodiscard]] bool mustPickService(const QString &dnsMessage, bool anyService, const QSet<QString> &chosen);

/// Whether a look at the browsers has ended and found none.
[[nodiscard]] bool foundNoBrowser(bool mayRead, bool scanning, bool anyBrowser);

/// Whether Return means "Next". A button that was pressed by Return is off while its work goes on: a second Return is
/// not meant for another one.
[[nodiscard]] bool returnGoesOn(int step, bool operating, const QSet<QString> &busy);

/// Whether Pi-hole could not be started because another program holds a port: by the message of the start, or by how
/// its operation failed.
[[nodiscard]] bool startFailedOnPort(const QString &startMessage, const std::optional<QString> &failure);

} // namespace corvane
