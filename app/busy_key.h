#pragma once

#include "app/app_model.h"

#include <QPointer>

namespace corvane {

/// Keeps a key in the model's busy set for as long as it lives, whichever way its flow ends.
class BusyKey {
public:
    BusyKey(AppModel *model, const QString &key)
        : m_model(model)
        , m_key(key)
    {
        model->markBusy(m_key);
    }

    ~BusyKey()
    {
        if (m_model) m_model->clearBusy(m_key);
    }

    BusyKey(const BusyKey &) = delete;
    BusyKey &operator=(const BusyKey &) = delete;

private:
    QPointer<AppModel> m_model;
    QString m_key;
};

} // namespace corvane
