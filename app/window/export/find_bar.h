#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace app {

/// A search field with what it found, to put beside a text. It only asks; the text is another's.
class find_bar : public QWidget
{
    Q_OBJECT

public:
    /// Hidden at first.
    explicit find_bar(QWidget * parent = nullptr);

    /// Shows the bar with the field in focus; `text` is what to look for, or empty for what was last.
    void open(const QString & text);
    /// Hides the bar; closed() follows.
    void dismiss();
    [[nodiscard]] QString text() const;
    [[nodiscard]] Qt::CaseSensitivity sensitivity() const;
    /// Tells how many matches there are, and which of them, from 1 on, is shown; 0 for none.
    void tell(int current, int count);

Q_SIGNALS:
    /// Other text, or another care for upper and lower case.
    void changed();
    void nextRequested();
    void previousRequested();
    /// The person is done with it; it is hidden already.
    void closed();

protected:
    void keyPressEvent(QKeyEvent * event) override;

private:
    QPushButton * addButton(const char * name, const QString & text, const QString & tip);

    QLineEdit * m_txtFind;
    QCheckBox * m_chkCase;
    QLabel * m_lblFound;
};

} // namespace app
