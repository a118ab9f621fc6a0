// The type-mapping editor on a real table widget, used by keys and clicks.

#include "view/ddl_export_type_mapping.h"

#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>
#include <QVBoxLayout>

Q_DECLARE_METATYPE(QTableWidgetItem *)

namespace {

using type_mapping = view::ddl_export_type_mapping::type_mapping;

type_mapping mapping(std::initializer_list<std::pair<QString, QString>> pairs)
{
    type_mapping list;
    for (const auto & [cpp, sql] : pairs) {
        list.insert(cpp, sql);
    }
    return list;
}

const type_mapping Three =
    mapping({{"<default type>", "TEXT"}, {"int", "INTEGER"}, {"QString", "VARCHAR(80)"}});

/// A window with the table in its frame, and the editor on them.
struct fixture
{
    fixture() : editor(table, frame, QStringLiteral("Mapping"))
    {
        auto * const inner = new QVBoxLayout(frame);
        inner->addWidget(table);
        auto * const outer = new QVBoxLayout(&window);
        outer->addWidget(frame);
        window.resize(600, 400);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    void show(const type_mapping & list)
    {
        editor.setListOfTypeMapping(list);
        editor.fill();
    }
    [[nodiscard]] QLineEdit * cpp(int row) const
    {
        return qobject_cast<QLineEdit *>(table->cellWidget(row, 2));
    }
    [[nodiscard]] QLineEdit * sql(int row) const
    {
        return qobject_cast<QLineEdit *>(table->cellWidget(row, 3));
    }
    [[nodiscard]] QPushButton * remove(int row) const
    {
        return qobject_cast<QPushButton *>(table->cellWidget(row, 4));
    }
    [[nodiscard]] QStringList rows() const
    {
        QStringList result;
        for (int row = 0; row < table->rowCount(); ++row) {
            result.append(cpp(row)->text() + QLatin1Char('=') + sql(row)->text());
        }
        return result;
    }
    [[nodiscard]] type_mapping readBack()
    {
        editor.file();
        return editor.getListOfTypeMapping();
    }

    QWidget window;
    QGroupBox * frame = new QGroupBox;
    QTableWidget * table = new QTableWidget;
    view::ddl_export_type_mapping editor;
};

} // namespace

class tst_type_mapping_table : public QObject
{
    Q_OBJECT

private slots:
    void layoutOfTheTable();
    void threePairsGiveFourRows();
    void emptyListGivesTheEmptyRow();
    void incompletePairsAreLeftOut();
    void firstRowIsProtected();
    void rowsCarryTheirIdentity();
    void fillAndFileAreInverse();
    void settingTheListLeavesTheTable();
    void typingIntoTheLastRowAddsAnother();
    void typingIntoTheSqlColumnAddsNothing();
    void firstOfEqualTypesWins();
    void halfRowsAreNotRead();
    void returnMovesTheFocus();
    void returnScrollsToTheRowItMovesTo();
    void returnInADialogPressesNoButton();
    void deletingKeepsTheOthersApart();
    void emptyLastRowIsNotDeleted();
    void rowWithoutCppTypeIsNotDeleted();
    void clearEmptiesListAndTable();
    void columnsShareTheWidth();
    void scrollBarChangesTheWidth();
    void scrollBarCountsWhileFilling();
    void hiddenTableStaysHidden();
    void withoutTableNothingHappens();
};

void tst_type_mapping_table::layoutOfTheTable()
{
    fixture f;
    f.show(Three);
    QCOMPARE(f.table->columnCount(), 5);
    const QStringList headers = {"[ID]", " ", "CPP type", "SQL type", " "};
    for (int c = 0; c < 5; ++c) {
        QCOMPARE(f.table->horizontalHeaderItem(c)->text(), headers.at(c));
    }
    QVERIFY(f.table->isColumnHidden(0));
    QVERIFY(f.table->alternatingRowColors());
    QVERIFY(!f.table->verticalHeader()->isVisible());
    QCOMPARE(f.table->editTriggers(), QAbstractItemView::AllEditTriggers);
    QCOMPARE(f.table->verticalHeader()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(f.table->item(1, 1)->flags(), Qt::ItemFlags(Qt::ItemIsEnabled));
    QVERIFY(!f.cpp(1)->hasFrame());
    QVERIFY(!f.sql(1)->hasFrame());
    QVERIFY(!f.remove(1)->icon().isNull());
}

void tst_type_mapping_table::threePairsGiveFourRows()
{
    fixture f;
    f.show(Three);
    const QStringList expected = {"<default type>=TEXT", "int=INTEGER", "QString=VARCHAR(80)", "="};
    QCOMPARE(f.rows(), expected);
    QCOMPARE(f.frame->title(), QStringLiteral("Mapping (3)"));
}

void tst_type_mapping_table::emptyListGivesTheEmptyRow()
{
    fixture f;
    f.show({});
    QCOMPARE(f.rows(), QStringList{"="});
    QVERIFY(!f.cpp(0)->isEnabled());
    QVERIFY(f.sql(0)->isEnabled());
    QVERIFY(!f.remove(0)->isEnabled());
    QCOMPARE(f.frame->title(), QStringLiteral("Mapping (0)"));
}

void tst_type_mapping_table::incompletePairsAreLeftOut()
{
    fixture f;
    f.show(mapping({{"a", "A"}, {"b", ""}, {"", "C"}, {"d", "D"}}));
    const QStringList expected = {"a=A", "d=D", "="};
    QCOMPARE(f.rows(), expected);
    QVERIFY(f.readBack() == mapping({{"a", "A"}, {"d", "D"}}));
}

void tst_type_mapping_table::firstRowIsProtected()
{
    fixture f;
    f.show(mapping({{"int", "INTEGER"}, {"<default type>", "TEXT"}}));
    QVERIFY(!f.cpp(0)->isEnabled());
    QVERIFY(f.sql(0)->isEnabled());
    QVERIFY(!f.remove(0)->isEnabled());
    QVERIFY(f.cpp(1)->isEnabled());
    QVERIFY(f.remove(1)->isEnabled());
    QTest::mouseClick(f.remove(0), Qt::LeftButton);
    QCOMPARE(f.table->rowCount(), 3);
}

void tst_type_mapping_table::rowsCarryTheirIdentity()
{
    fixture f;
    f.show(Three);
    for (int row = 0; row < f.table->rowCount(); ++row) {
        QCOMPARE(f.table->item(row, 0)->data(Qt::UserRole + 1).toString(), f.cpp(row)->text());
        for (const QWidget * cell :
             {f.table->cellWidget(row, 2), f.table->cellWidget(row, 3), f.table->cellWidget(row, 4)}) {
            const QVariant id = cell->property("KORV_TABLE_TYPE_MAPPING_KEY_ROW_ID");
            QCOMPARE(id.value<QTableWidgetItem *>(), f.table->item(row, 0));
        }
    }
    QVERIFY(QMetaType::fromName("QTableWidgetItem *").isValid());
}

void tst_type_mapping_table::fillAndFileAreInverse()
{
    fixture f;
    f.show(Three);
    QVERIFY(f.readBack() == Three);
    f.editor.fill();
    QVERIFY(f.readBack() == Three);
}

void tst_type_mapping_table::settingTheListLeavesTheTable()
{
    fixture f;
    f.show(Three);
    f.editor.setListOfTypeMapping(mapping({{"x", "X"}}));
    QCOMPARE(f.table->rowCount(), 4);
    QVERIFY(f.editor.getListOfTypeMapping() == mapping({{"x", "X"}}));
    f.sql(1)->setText(QStringLiteral("BIGINT"));
    QVERIFY(f.editor.getListOfTypeMapping() == mapping({{"x", "X"}}));
    QCOMPARE(f.readBack().getByKey(QStringLiteral("int")), QStringLiteral("BIGINT"));
}

void tst_type_mapping_table::typingIntoTheLastRowAddsAnother()
{
    fixture f;
    f.show(Three);
    QTest::keyClicks(f.cpp(3), QStringLiteral("Money"));
    QCOMPARE(f.table->rowCount(), 5);
    QCOMPARE(f.frame->title(), QStringLiteral("Mapping (4)"));
    QVERIFY(f.cpp(4)->text().isEmpty());
    QTest::keyClicks(f.sql(3), QStringLiteral("DECIMAL(9,2)"));
    QCOMPARE(f.readBack().getByKey(QStringLiteral("Money")), QStringLiteral("DECIMAL(9,2)"));
}

void tst_type_mapping_table::typingIntoTheSqlColumnAddsNothing()
{
    fixture f;
    f.show(Three);
    QTest::keyClicks(f.sql(3), QStringLiteral("X"));
    QCOMPARE(f.table->rowCount(), 4);
    QVERIFY(f.readBack() == Three);
}

void tst_type_mapping_table::firstOfEqualTypesWins()
{
    fixture f;
    f.show(Three);
    QTest::keyClicks(f.cpp(3), QStringLiteral("int"));
    QTest::keyClicks(f.sql(3), QStringLiteral("LATER"));
    QVERIFY(f.readBack() == Three);
}

void tst_type_mapping_table::halfRowsAreNotRead()
{
    fixture f;
    f.show(Three);
    f.sql(1)->clear();
    QVERIFY(f.readBack() == mapping({{"<default type>", "TEXT"}, {"QString", "VARCHAR(80)"}}));
}

void tst_type_mapping_table::returnMovesTheFocus()
{
    fixture f;
    f.show(Three);
    f.cpp(1)->setFocus();
    QTest::keyClick(f.cpp(1), Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.sql(1));
    QTest::keyClick(f.sql(1), Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.cpp(2));
    f.sql(3)->setFocus();
    QTest::keyClick(f.sql(3), Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.sql(3));
}

void tst_type_mapping_table::returnScrollsToTheRowItMovesTo()
{
    fixture f;
    type_mapping many;
    for (int i = 0; i < 50; ++i) {
        many.insert(QStringLiteral("type_%1").arg(i), QStringLiteral("TEXT"));
    }
    f.show(many);
    // A column that a person made wide hides the beginning of the rows as well.
    f.table->setColumnWidth(3, 900);
    f.sql(39)->setFocus();
    f.table->scrollToTop();
    QScrollBar * const bar = f.table->horizontalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    bar->setValue(bar->maximum());
    const auto beginIsSeen = [&f] {
        return f.table->viewport()->rect().contains(f.table->visualItemRect(f.table->item(40, 1)).center());
    };
    QVERIFY(!beginIsSeen());
    QTest::keyClick(f.sql(39), Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.cpp(40));
    QVERIFY(beginIsSeen());
}

void tst_type_mapping_table::returnInADialogPressesNoButton()
{
    QDialog dialog;
    auto * const table = new QTableWidget;
    (new QVBoxLayout(&dialog))->addWidget(table);
    view::ddl_export_type_mapping editor(table, nullptr, QString());
    editor.setListOfTypeMapping(Three);
    editor.fill();
    // A dialog without a default button looks for one behind the field that has the focus when it opens.
    auto * const sql = qobject_cast<QLineEdit *>(table->cellWidget(1, 3));
    sql->setFocus();
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTest::keyClick(sql, Qt::Key_Return);
    editor.file();
    QVERIFY(editor.getListOfTypeMapping() == Three);
}

void tst_type_mapping_table::deletingKeepsTheOthersApart()
{
    fixture f;
    f.show(mapping({{"a", "A"}, {"b", "B"}, {"c", "C"}, {"d", "D"}}));
    QPushButton * const removeC = f.remove(2);
    QTest::mouseClick(f.remove(1), Qt::LeftButton);
    QStringList expected = {"a=A", "c=C", "d=D", "="};
    QCOMPARE(f.rows(), expected);
    QCOMPARE(f.frame->title(), QStringLiteral("Mapping (3)"));
    QCOMPARE(f.remove(1), removeC);
    f.cpp(1)->setFocus();
    QTest::keyClick(f.cpp(1), Qt::Key_Return);
    QCOMPARE(QApplication::focusWidget(), f.sql(1));
    QTest::mouseClick(removeC, Qt::LeftButton);
    expected = {"a=A", "d=D", "="};
    QCOMPARE(f.rows(), expected);
    QVERIFY(f.readBack() == mapping({{"a", "A"}, {"d", "D"}}));
}

void tst_type_mapping_table::emptyLastRowIsNotDeleted()
{
    fixture f;
    f.show(Three);
    QVERIFY(f.remove(3)->isEnabled());
    QTest::mouseClick(f.remove(3), Qt::LeftButton);
    QCOMPARE(f.table->rowCount(), 4);
}

void tst_type_mapping_table::rowWithoutCppTypeIsNotDeleted()
{
    fixture f;
    f.show(Three);
    QTest::keyClicks(f.sql(3), QStringLiteral("typed first"));
    f.cpp(1)->clear();
    QTest::mouseClick(f.remove(3), Qt::LeftButton);
    QTest::mouseClick(f.remove(1), Qt::LeftButton);
    const QStringList expected = {"<default type>=TEXT", "=INTEGER", "QString=VARCHAR(80)", "=typed first"};
    QCOMPARE(f.rows(), expected);
}

void tst_type_mapping_table::clearEmptiesListAndTable()
{
    fixture f;
    f.show(Three);
    f.editor.clear();
    QCOMPARE(f.table->rowCount(), 0);
    QVERIFY(f.editor.getListOfTypeMapping().isEmpty());
}

void tst_type_mapping_table::columnsShareTheWidth()
{
    fixture f;
    f.show(Three);
    const auto expected = [&f] {
        int width = f.table->width() - 5 - f.table->columnWidth(1) - f.table->columnWidth(4);
        if (f.table->verticalScrollBar()->isVisible()) {
            width -= f.table->verticalScrollBar()->width();
        }
        return width / 2;
    };
    QCOMPARE(f.table->columnWidth(2), expected());
    QCOMPARE(f.table->columnWidth(3), expected());
    f.window.resize(900, 400);
    f.editor.resizeTableWidget();
    QCOMPARE(f.table->columnWidth(2), expected());
    QVERIFY(f.table->columnWidth(2) > 350);
}

void tst_type_mapping_table::scrollBarChangesTheWidth()
{
    fixture f;
    f.show(Three);
    const int before = f.table->columnWidth(2);
    type_mapping many;
    for (int i = 0; i < 200; ++i) {
        many.insert(QStringLiteral("type_%1").arg(i), QStringLiteral("TEXT"));
    }
    f.show(many);
    QTRY_VERIFY(f.table->verticalScrollBar()->isVisible());
    QTRY_VERIFY(f.table->columnWidth(2) < before);
    QCOMPARE(f.frame->title(), QStringLiteral("Mapping (200)"));
}

void tst_type_mapping_table::scrollBarCountsWhileFilling()
{
    fixture f;
    f.show(Three);
    int widthAfterChange = 0;
    connect(f.table->model(), &QAbstractItemModel::rowsInserted, this, [&] {
        f.table->setColumnWidth(2, 17);
        QVERIFY(QMetaObject::invokeMethod(&f.editor, "doVScrollVisibilityChanged",
                                          Q_ARG(QObject *, f.table->verticalScrollBar()), Q_ARG(bool, true)));
        widthAfterChange = f.table->columnWidth(2);
    });
    f.editor.fill();
    QVERIFY2(widthAfterChange > 200, qPrintable(QString::number(widthAfterChange)));
}

void tst_type_mapping_table::hiddenTableStaysHidden()
{
    fixture f;
    f.table->hide();
    f.show(Three);
    QVERIFY(f.table->isHidden());
    f.table->show();
    f.show(Three);
    QVERIFY(!f.table->isHidden());
    QVERIFY(f.table->updatesEnabled());
}

void tst_type_mapping_table::withoutTableNothingHappens()
{
    QGroupBox frame;
    frame.setTitle(QStringLiteral("before"));
    view::ddl_export_type_mapping editor(nullptr, &frame, QStringLiteral("Mapping"));
    editor.setListOfTypeMapping(Three);
    editor.fill();
    editor.file();
    editor.resizeTableWidget();
    QVERIFY(editor.getListOfTypeMapping() == Three);
    QCOMPARE(frame.title(), QStringLiteral("before"));
    editor.clear();
    QVERIFY(editor.getListOfTypeMapping().isEmpty());
}

QTEST_MAIN(tst_type_mapping_table)
#include "tst_type_mapping_table.moc"
