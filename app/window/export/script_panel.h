#pragma once

#include <QStringList>
#include <QWidget>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QPushButton;
class QStackedWidget;
class QTabWidget;

namespace app {

class find_bar;
class script_view;

/// The scripts that an export wrote, each in a tab, to read, search and copy.
class script_panel : public QWidget
{
    Q_OBJECT

public:
    explicit script_panel(QWidget * parent = nullptr);

    /// Shows the script files as tabs in this order, in place of those shown before; the first is in front.
    /// Files are read when their tab is first shown.
    void setScripts(const QStringList & absoluteFiles);
    [[nodiscard]] QStringList scripts() const { return m_lstFiles; }

    /// Brings the script of that file name to the front, with the line, from 1, selected and in view. False
    /// when it is not there.
    bool showLine(const QString & fileName, int line);

    /// Opens the search field for the script in front, with what is selected in it.
    void find();
    /// Goes to the next or the former match, and opens the search field when there is nothing to look for.
    void findNext();
    void findPrevious();

Q_SIGNALS:
    /// The person asked for the folder of the scripts to be opened.
    void openFolderRequested(const QString & folder);

protected:
    void keyPressEvent(QKeyEvent * event) override;
    void showEvent(QShowEvent * event) override;

private:
    QBoxLayout * createBar();
    QPushButton * addButton(QBoxLayout * bar, const char * name, const QString & text, const QString & tip);
    void createFindBar();
    /// The script in front, read now if it was not; null when there is none.
    script_view * front();
    void showFront();
    void switchBy(int step);
    void findInFront();
    void findAgain(void (script_view::*go)());
    void closeFindBar();

    QStringList m_lstFiles;
    QComboBox * m_cboScript = nullptr;
    QCheckBox * m_chkWrap = nullptr;
    QPushButton * m_btnCopyScript = nullptr;
    QPushButton * m_btnOpenFolder = nullptr;
    QStackedWidget * m_stkContent = nullptr;
    QTabWidget * m_tabScripts = nullptr;
    find_bar * m_findBar = nullptr;
};

} // namespace app
