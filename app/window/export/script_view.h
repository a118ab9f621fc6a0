#pragma once

#include <QWidget>

#include <vector>

class QLabel;

namespace app {

class script_text;

/// One script file, to read and to search: its name, what there is to say about it, and its text.
///
/// A file that cannot be read is told of in the place of its text. Of one of more than LongestRead bytes, and
/// of lines of more than LongestLine characters, the first part is shown, and a note says so.
class script_view : public QWidget
{
    Q_OBJECT

public:
    static constexpr qint64 LongestRead = qint64{32} * 1024 * 1024;
    static constexpr int LongestLine = 500'000;

    /// Reads `file`, a text in UTF-8.
    explicit script_view(const QString & file, QWidget * parent = nullptr);

    /// What is shown of the file, lines ended by line feeds.
    [[nodiscard]] const QString & text() const { return m_sText; }
    /// Whether text() is all of the file; not when some was left out or it could not be read.
    [[nodiscard]] bool isWhole() const { return m_bWhole; }
    /// What is selected in the text, when it is in one line; else empty.
    [[nodiscard]] QString selectedText() const;

    void setWrapped(bool wrapped);
    /// Selects the line, from 1, and brings it into view; nothing for one that is not there.
    void showLine(int line);
    void focusText();
    /// Lets the Tab key come here after `before`; what is made late comes last in its window otherwise.
    void placeInTabOrder(QWidget * before);

    /// Finds and marks every place of `what`, without going to one; empty ends the search.
    void findAll(const QString & what, Qt::CaseSensitivity sensitivity);
    /// Goes to the first match that begins at the text cursor, or the selection, or later; to the next one
    /// after it; to the last one before it. All go on at the other end of the text.
    void findHere();
    void findNext();
    void findPrevious();
    [[nodiscard]] int matchCount() const { return static_cast<int>(m_matches.size()); }
    /// The match that was gone to, from 1 on; 0 when none was.
    [[nodiscard]] int currentMatch() const { return static_cast<int>(m_iCurrent + 1); }

private:
    QWidget * createHead(const QString & file);
    void read(const QString & file);
    void take(const QByteArray & bytes, bool isWhole);
    void cutLongLines();
    void showProblem(const QString & text);
    void addNote(const QString & text);
    void goTo(qsizetype match);
    void findFrom(int position);
    void showSize(qint64 bytes);

    QWidget * m_txtFile = nullptr;
    script_text * m_txtScript;
    QLabel * m_lblSize;
    QLabel * m_lblNote;
    QLabel * m_lblProblem;
    QString m_sText;
    int m_iWhatLength = 0;
    std::vector<int> m_matches;
    qsizetype m_iCurrent = -1;
    bool m_bWhole = false;
};

} // namespace app
