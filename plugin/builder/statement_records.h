#pragma once

#include "plugin/builder/statement_sink.h"

#include <vector>

namespace plugin {

/// A script as records in memory. Nothing of it fails.
class statement_records : public statement_sink
{
public:
    /// @param records to which those of this script are appended; has to stay as long as this object
    statement_records(const script_identity & script, std::vector<statement_record> & records);

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
    std::vector<statement_record> & m_records;
};

} // namespace plugin
