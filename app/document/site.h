#pragma once

#include "app/document/site_folder.h"

namespace plugin {
class statement_source;
}

namespace app {

class source;

/// The pages that document a model.
struct made_site
{
    std::vector<site_file> files;
    qsizetype entities = 0;
    QString note; ///< one line about what is not as it could be; empty when all is
};

/// Makes the pages for the state of `of`, with its history if it has one. The same model gives the same
/// bytes. A failure is one line.
/// @param databases keys of those whose types are told; see app/database_choice.h
[[nodiscard]] zk::ZkBool makeSite(source & of, plugin::statement_source & statements,
                                  const QStringList & databases, made_site & made);

} // namespace app
