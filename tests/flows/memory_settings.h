#pragma once

#include "app/settings_store.h"

#include <QMap>

namespace corvane::test {

/// Settings that last as long as the test.
class MemorySettings final : public SettingsStore {
public:
    [[nodiscard]] QVariant value(const QString &key) const override { return m_values.value(key); }
    void setValue(const QString &key, const QVariant &value) override { m_values.insert(key, value); }

private:
    QMap<QString, QVariant> m_values;
};

} // namespace corvane::test
