#include "view/ddl_export_type_mapping.h"

#include "tools/event_filter.h"
#include "tools/scoped_in_event.h"
#include "tools/wait_cursor.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaType>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>

Q_DECLARE_METATYPE(QTableWidgetItem *)

namespace view {

namespace {

enum column
{
    col_id = 0,
    col_spacer = 1,
    col_cpp_type = 2,
    col_sql_type = 3,
    col_delete = 4,
    col_count = 5
};

constexpr int CppTypeRole = Qt::UserRole + 1;
constexpr const char * RowProperty = "KORV_TABLE_TYPE_MAPPING_KEY_ROW_ID";
/// What the frame of the table and rounding take from its width, in pixels.
constexpr int FrameWidth = 5;
constexpr int LeastFreeWidth = 10;

} // namespace

ddl_export_type_mapping::ddl_export_type_mapping(QTableWidget * table, QGroupBox * groupBox,
                                                 const QString & title)
    : m_pTable(table), m_pGroupBox(groupBox), m_sTitle(title)
{
    qRegisterMetaType<QTableWidgetItem *>("QTableWidgetItem *");
}

ddl_export_type_mapping::~ddl_export_type_mapping() = default;

void ddl_export_type_mapping::setListOfTypeMapping(const type_mapping & list)
{
    if (&list != &m_list) {
        m_list = list;
    }
}

void ddl_export_type_mapping::initTableWidget()
{
    if (!m_pTable) {
        return;
    }
    clearTableWidget();
    m_pTable->setAlternatingRowColors(true);
    m_pTable->verticalHeader()->setVisible(false);
    m_pTable->setColumnCount(col_count);
    m_pTable->setHorizontalHeaderLabels(
        {QStringLiteral("[ID]"), QStringLiteral(" "), tr("CPP type"), tr("SQL type"), QStringLiteral(" ")});
    m_pTable->setColumnHidden(col_id, true);
    m_pTable->setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_pTable->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    if (m_pScrollBarWatcher) {
        return;
    }
    m_pScrollBarWatcher = new tools::event_filter(this);
    if (QScrollBar * const bar = m_pTable->verticalScrollBar()) {
        bar->installEventFilter(m_pScrollBarWatcher);
    }
    connect(m_pScrollBarWatcher, &tools::event_filter::onVisibilityChanged, this,
            &ddl_export_type_mapping::doVScrollVisibilityChanged);
}

QLineEdit * ddl_export_type_mapping::newLineEdit(const QString & text, const QString & accessibleName)
{
    auto * const edit = new QLineEdit(text);
    edit->setFrame(false);
    edit->setAccessibleName(accessibleName);
    return edit;
}

void ddl_export_type_mapping::addTableRow(const QString & cppType, const QString & sqlType, int row)
{
    if (!m_pTable) {
        return;
    }
    if (row == -1) {
        row = m_pTable->rowCount();
        m_pTable->setRowCount(row + 1);
    }
    auto * const id = new QTableWidgetItem;
    id->setData(CppTypeRole, cppType);
    m_pTable->setItem(row, col_id, id);
    auto * const spacer = new QTableWidgetItem;
    spacer->setFlags(Qt::ItemIsEnabled);
    m_pTable->setItem(row, col_spacer, spacer);

    QLineEdit * const cpp = newLineEdit(cppType, m_pTable->horizontalHeaderItem(col_cpp_type)->text());
    connect(cpp, &QLineEdit::textChanged, this, &ddl_export_type_mapping::doColCppTypeChanged);
    connect(cpp, &QLineEdit::returnPressed, this, &ddl_export_type_mapping::doColCppTypeReturnPressed);
    QLineEdit * const sql = newLineEdit(sqlType, m_pTable->horizontalHeaderItem(col_sql_type)->text());
    connect(sql, &QLineEdit::textChanged, this, &ddl_export_type_mapping::doColSqlTypeChanged);
    connect(sql, &QLineEdit::returnPressed, this, &ddl_export_type_mapping::doColSqlTypeReturnPressed);
    auto * const remove = new QPushButton(QIcon(QStringLiteral(":/ddl_export/images/delete.png")), QString());
    remove->setAccessibleName(tr("Delete this mapping"));
    // Return moves between the fields of the table; it must not press a button of the dialog.
    remove->setAutoDefault(false);
    connect(remove, &QPushButton::clicked, this, &ddl_export_type_mapping::doBtnDeleteClicked);
    if (row == 0) {
        cpp->setEnabled(false);
        remove->setEnabled(false);
    }

    const QVariant rowId = QVariant::fromValue(id);
    const std::pair<int, QWidget *> cells[] = {
        {col_cpp_type, cpp}, {col_sql_type, sql}, {col_delete, remove}};
    for (const auto & [column, widget] : cells) {
        widget->setProperty(RowProperty, rowId);
        m_pTable->setCellWidget(row, column, widget);
    }
}

void ddl_export_type_mapping::fill()
{
    initTableWidget();
    if (!m_pTable) {
        return;
    }
    {
        const tools::scoped_in_event filling(m_bFilling, true, 0);
        const bool wasHidden = m_pTable->isHidden();
        m_pTable->setUpdatesEnabled(false);
        m_pTable->setRowCount(static_cast<int>(m_list.count()) + 1);
        m_pTable->setVisible(false);
        int row = 0;
        for (long i = 0; i < m_list.count(); ++i) {
            const QString cppType = m_list.getKeyByIndex(i);
            const QString sqlType = m_list.getByIndex(i);
            if (!cppType.isEmpty() && !sqlType.isEmpty()) {
                addTableRow(cppType, sqlType, row++);
            }
        }
        addTableRow(QString(), QString(), row);
        for (int surplus = m_pTable->rowCount() - 1; surplus > row; --surplus) {
            m_pTable->removeRow(surplus);
        }
        m_pTable->setUpdatesEnabled(true);
        if (!wasHidden) {
            m_pTable->setVisible(true);
        }
        resizeTableWidget();
    }
    checkTableRowNew();
}

void ddl_export_type_mapping::file()
{
    if (!m_pTable) {
        return;
    }
    m_list.clear();
    for (int row = 0; row < m_pTable->rowCount(); ++row) {
        const QString cppType = getCppTypeByRow(row);
        const QLineEdit * const sql = lineEdit(row, col_sql_type);
        if (!cppType.isEmpty() && sql && !sql->text().isEmpty()) {
            m_list.insert(cppType, sql->text());
        }
    }
}

void ddl_export_type_mapping::clear()
{
    m_list.clear();
    clearTableWidget();
}

void ddl_export_type_mapping::checkTableRowNew()
{
    static bool running = false;
    if (running) {
        return;
    }
    const tools::scoped_in_event guard(running, true, 0);
    if (!m_pTable) {
        return;
    }
    if (!getCppTypeByRow(m_pTable->rowCount() - 1).isEmpty()) {
        addTableRow(QString(), QString(), -1);
    }
    if (m_pGroupBox) {
        m_pGroupBox->setTitle(m_sTitle + QStringLiteral(" (") + QString::number(m_pTable->rowCount() - 1) +
                              QLatin1Char(')'));
    }
}

void ddl_export_type_mapping::resizeTableWidget()
{
    if (!m_pTable) {
        return;
    }
    const tools::wait_cursor cursor;
    m_pTable->resizeRowsToContents();
    m_pTable->resizeColumnsToContents();
    int width = m_pTable->width() - FrameWidth;
    if (const QScrollBar * const bar = m_pTable->verticalScrollBar(); bar && bar->isVisible()) {
        width -= bar->width();
    }
    width -= m_pTable->columnWidth(col_spacer) + m_pTable->columnWidth(col_delete);
    if (width > LeastFreeWidth) {
        m_pTable->setColumnWidth(col_cpp_type, width / 2);
        m_pTable->setColumnWidth(col_sql_type, width / 2);
    }
}

void ddl_export_type_mapping::clearTableWidget()
{
    if (!m_pTable) {
        return;
    }
    for (int row = m_pTable->rowCount() - 1; row >= 0; --row) {
        clearTableWidgetRow(row);
        m_pTable->removeRow(row);
    }
    m_pTable->setRowCount(0);
}

void ddl_export_type_mapping::clearTableWidgetRow(int row)
{
    if (QTableWidgetItem * const id = m_pTable ? m_pTable->item(row, col_id) : nullptr) {
        id->setData(CppTypeRole, QVariant());
    }
}

QString ddl_export_type_mapping::getCppTypeByRow(int row)
{
    const QLineEdit * const cpp = row == -1 ? nullptr : lineEdit(row, col_cpp_type);
    return cpp ? cpp->text() : QString();
}

QLineEdit * ddl_export_type_mapping::lineEdit(int row, int column) const
{
    return m_pTable ? qobject_cast<QLineEdit *>(m_pTable->cellWidget(row, column)) : nullptr;
}

int ddl_export_type_mapping::senderRow() const
{
    const auto * const id = sender() ? sender()->property(RowProperty).value<QTableWidgetItem *>() : nullptr;
    return m_pTable && id ? m_pTable->row(id) : -1;
}

void ddl_export_type_mapping::doColCppTypeChanged(const QString &)
{
    if (!m_bFilling) {
        checkTableRowNew();
    }
}

void ddl_export_type_mapping::doColSqlTypeChanged(const QString &)
{
    if (!m_bFilling) {
        checkTableRowNew();
    }
}

void ddl_export_type_mapping::doColCppTypeReturnPressed()
{
    const int row = m_bFilling ? -1 : senderRow();
    if (QLineEdit * const sql = row == -1 ? nullptr : lineEdit(row, col_sql_type)) {
        sql->setFocus();
    }
}

void ddl_export_type_mapping::doColSqlTypeReturnPressed()
{
    const int row = m_bFilling ? -1 : senderRow();
    if (QLineEdit * const nextCpp = row == -1 ? nullptr : lineEdit(row + 1, col_cpp_type)) {
        m_pTable->scrollToItem(m_pTable->item(row + 1, col_spacer));
        nextCpp->setFocus();
    }
}

void ddl_export_type_mapping::doBtnDeleteClicked()
{
    if (m_bFilling || !m_pTable) {
        return;
    }
    const int row = senderRow();
    if (row != -1 && !getCppTypeByRow(row).isEmpty()) {
        clearTableWidgetRow(row);
        m_pTable->removeRow(row);
    }
    checkTableRowNew();
}

void ddl_export_type_mapping::doVScrollVisibilityChanged(QObject *, bool)
{
    resizeTableWidget();
}

} // namespace view
