#pragma once

#include "app/window/export/sql_highlighter.h"

#include <QPlainTextEdit>

#include <memory>
#include <vector>

namespace app {

/// The text of a script, to read: with line numbers, coloured, and with places that are marked.
///
/// Only what is in view is coloured and marked, when it is drawn: a script may have hundreds of thousands of
/// lines.
class script_text : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit script_text(QWidget * parent = nullptr);
    ~script_text() override;

    /// Shows `text`, whose lines end with a line feed alone, so that places in it are places in the document.
    void setScript(const QString & text, sql_dialect dialect);
    void setWrapped(bool wrapped);

    /// Marks the places that begin at `starts`, in order, each `length` long. The one with the index
    /// `current` stands out and is moved into view; -1 for none.
    void setMarks(std::vector<int> starts, int length, qsizetype current);

    /// Selects `count` lines, the first of which is `line`, counted from 1, and brings them into view;
    /// nothing for one that is not there.
    void selectLines(int line, int count);

    [[nodiscard]] int marginWidth() const;
    void paintMargin(QPaintEvent * event);

protected:
    bool viewportEvent(QEvent * event) override;
    void paintEvent(QPaintEvent * event) override;
    void resizeEvent(QResizeEvent * event) override;
    void changeEvent(QEvent * event) override;

private:
    void placeMargin();
    void takeFont();
    void dressVisible();
    void showMarks(int from, int to);
    [[nodiscard]] QTextEdit::ExtraSelection mark(qsizetype index) const;

    QWidget * m_pMargin;
    std::unique_ptr<sql_highlighter> m_pHighlighter;
    std::vector<int> m_marks;
    int m_iMarkLength = 0;
    qsizetype m_iCurrentMark = -1;
    /// First and last line that were dressed when drawn last; what is in view has changed when they differ.
    int m_iFirstDressed = -1;
    int m_iLastDressed = -1;
};

} // namespace app
