#pragma once

#include <QPlainTextEdit>
#include <QSet>

namespace tools {

/// The source of a script, to read: with line numbers, breakpoints in the margin and the line that is
/// current.
class script_source_view : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit script_source_view(QWidget * parent = nullptr);

    void setBreakpointsPossible(bool possible) { m_bBreakpointsPossible = possible; }
    [[nodiscard]] const QSet<int> & breakpoints() const { return m_breakpoints; }
    /// Marks `line` (from 1 on) and moves it into view; 0 marks none.
    void setCurrentLine(int line);
    [[nodiscard]] int currentLine() const { return m_iCurrentLine; }
    /// Sets or takes away the breakpoint of `line`; nothing for a line that the script does not have.
    void toggleBreakpoint(int line);
    /// The line of the text cursor.
    [[nodiscard]] int cursorLine() const { return textCursor().blockNumber() + 1; }

    [[nodiscard]] int marginWidth() const;
    void paintMargin(QPaintEvent * event);
    void clickMargin(int y);

Q_SIGNALS:
    void breakpointsChanged();

protected:
    void resizeEvent(QResizeEvent * event) override;
    void changeEvent(QEvent * event) override;

private:
    void placeMargin();
    void markCurrentLine();

    QWidget * m_pMargin;
    QSet<int> m_breakpoints;
    int m_iCurrentLine = 0;
    bool m_bBreakpointsPossible = true;
};

} // namespace tools
