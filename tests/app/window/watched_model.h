#pragma once

#include "tree_shop.h"

#include "app/window/tree/project_tree_model.h"

#include <QAbstractItemModelTester>

namespace support {

/// A model that is watched for mistakes all the time.
struct watched_model
{
    explicit watched_model(const std::shared_ptr<model::project> & project, const QString & filter = {})
    {
        rows.setProject(project, filter);
    }

    /// The names of the rows, a blank a level.
    [[nodiscard]] QStringList names() const
    {
        QStringList result;
        for (const QString & row : rowsOf(rows)) {
            result << row.section(QStringLiteral(" | "), 0, 0);
        }
        return result;
    }
    [[nodiscard]] QModelIndex at(const QList<int> & path, int column = 0) const
    {
        QModelIndex index;
        for (const int row : path) {
            index = rows.index(row, 0, index);
        }
        return index.siblingAtColumn(column);
    }
    [[nodiscard]] QString toolTip(const QList<int> & path) const
    {
        return at(path).data(Qt::ToolTipRole).toString();
    }

    app::project_tree_model rows;
    QAbstractItemModelTester tester{&rows, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace support
