#pragma once

#include "plugin/builder/statement_sink.h"

namespace plugin {

/// A script as records, each handed over as soon as it is made. Nothing of it fails.
class statement_records : public statement_sink
{
public:
    statement_records(const script_identity & script, statement_receiver receiver);

    [[nodiscard]] bool open() override { return true; }
    [[nodiscard]] bool take(const script_statement & statement) override;
    [[nodiscard]] bool close() override { return true; }
    [[nodiscard]] QString reason() const override { return {}; }
    [[nodiscard]] QString lossText() const override { return {}; }
    void abandon() override {}

private:
    QString m_sScript;
    int m_iFrom = 0;
    int m_iTo = 0;
    int m_iLine = 1; ///< the next text begins there
    statement_receiver m_receiver;
};

} // namespace plugin
