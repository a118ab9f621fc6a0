#pragma once

#include "zk/zk_collection.h"

#include <QObject>
#include <QString>

class QGroupBox;
class QLineEdit;
class QTableWidget;

namespace tools {
class event_filter;
}

namespace view {

/// Turns a table widget into an editor of one mapping list: C++ type name to SQL type.
///
/// The list is only as fresh as the last setListOfTypeMapping() or file(): who wants the user's edits calls
/// file() first. The first row is the default type: its C++ type can be neither edited nor deleted. The last
/// row is always an empty one for a new entry.
class ddl_export_type_mapping : public QObject
{
    Q_OBJECT

public:
    using type_mapping = zk::ZkCollection<QString, QString>;

    /// @param table the edited table, not owned, may be null
    /// @param groupBox frame whose title shows the number of mappings, not owned, may be null
    /// @param title the frame's title without the number
    ddl_export_type_mapping(QTableWidget * table, QGroupBox * groupBox, const QString & title);
    ~ddl_export_type_mapping() override;

    /// Copies the list in; the table stays as it is.
    void setListOfTypeMapping(const type_mapping & list);
    /// Copy of the list; the table is not read.
    [[nodiscard]] type_mapping getListOfTypeMapping() const { return m_list; }

    /// Shows the list in the table; pairs with an empty C++ or SQL type are left out.
    void fill();
    /// Reads the table back into the list; incomplete rows and repeated C++ types are left out.
    void file();
    /// Empties the list and the table.
    void clear();
    /// Shares the table's free width between the two text columns.
    void resizeTableWidget();

protected:
    void initTableWidget();
    /// Fills row `row`, or a new last row for -1.
    void addTableRow(const QString & cppType, const QString & sqlType, int row);
    /// Makes sure that the last row is an empty one, and shows the number of mappings.
    void checkTableRowNew();
    void clearTableWidget();
    void clearTableWidgetRow(int row);
    /// Text of the C++ column; empty for row -1 and for a row without a line edit.
    [[nodiscard]] QString getCppTypeByRow(int row);

protected Q_SLOTS:
    void doColCppTypeChanged(const QString & text);
    void doColCppTypeReturnPressed();
    void doColSqlTypeChanged(const QString & text);
    void doColSqlTypeReturnPressed();
    void doBtnDeleteClicked();
    void doVScrollVisibilityChanged(QObject * watched, bool bVisible);

private:
    [[nodiscard]] QLineEdit * lineEdit(int row, int column) const;
    [[nodiscard]] QLineEdit * newLineEdit(const QString & text, const QString & accessibleName);
    /// Current row of the widget that sent the signal; -1 when it is in none.
    [[nodiscard]] int senderRow() const;

    QTableWidget * m_pTable = nullptr;
    QGroupBox * m_pGroupBox = nullptr;
    QString m_sTitle;
    bool m_bFilling = false;
    tools::event_filter * m_pScrollBarWatcher = nullptr;
    type_mapping m_list;
};

} // namespace view
