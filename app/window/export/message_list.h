#pragma once

#include <QAbstractListModel>
#include <QColor>
#include <QString>
#include <QTimer>
#include <QVariant>

#include <deque>
#include <vector>

class QPalette;

namespace app {

/// What a line of the messages is.
enum class message_kind : quint8
{
    progress,
    note,     ///< a finding to know of
    accepted, ///< a finding that somebody lives with
    warning,
    error,
    heading, ///< begins a run
    closing, ///< ends a run that went well
    dropped  ///< tells of lines that are no longer there
};

/// What a line has for data() beside texts.
enum message_role : int
{
    MessageKindRole = Qt::UserRole + 1, ///< message_kind as int
    MessageCopyRole,                    ///< the whole text as it is to be pasted, with a word for what it is
    MessageTargetRole                   ///< what the line leads to, as it was given to add()
};

/// What the line at `index` of a message_list, or of a model on top of it, is.
[[nodiscard]] message_kind messageKind(const QModelIndex & index);

/// The colour in which a line of `kind` is legible on the base colour of `palette`; invalid where the line is
/// ordinary text.
[[nodiscard]] QColor messageColor(message_kind kind, const QPalette & palette);

/// The lines of the runs of an export, oldest first.
///
/// New lines are held back for a moment and shown together: an export tells a hundred thousand in a burst.
/// Above a limit the oldest are dropped, and the first line says how many.
class message_list : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int DefaultLimit = 200'000;

    /// @param limit how many lines are kept, 10 at least
    explicit message_list(QObject * parent = nullptr, int limit = DefaultLimit);

    /// Appends a line. It is a row after the next flush(), 50 milliseconds from now at the latest.
    /// @param target for who is told that the person wants to go there
    void add(const QString & text, message_kind kind, const QVariant & target = {});
    /// Makes rows of the lines that were held back.
    void flush();
    /// Removes all lines, and those held back.
    void clear();

    [[nodiscard]] int rowCount(const QModelIndex & parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex & index, int role = Qt::DisplayRole) const override;

private:
    struct line
    {
        QString text;
        message_kind kind;
        QVariant target;
    };

    void dropOldest();

    std::deque<line> m_lines;
    std::vector<line> m_pending;
    QTimer m_flushTimer;
    int m_iLimit;
    int m_iDropped = 0;
};

} // namespace app
