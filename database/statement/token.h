#pragma once

#include <QString>

#include <vector>

namespace database {

enum class token_kind
{
    word,   ///< what stands between blanks and the marks below, such as a name, a keyword, a number
    quoted, ///< a name in quotation marks, without these; marks inside are single
    text,   ///< a string in apostrophes, without these
    open,
    close,
    comma,
    semicolon,
    line_of_slash, ///< a line with nothing but a slash, which ends a block of statements
    unfinished     ///< a quotation that nothing ends: the rest of the text
};

struct token
{
    token_kind kind = token_kind::word;
    QString text;
    QChar quote;         ///< that a quoted name began with
    qsizetype begin = 0; ///< where it stands in the text, quotation marks included
    qsizetype end = 0;

    /// Whether it is that word, in any case. Keywords are asked for in capitals.
    [[nodiscard]] bool isWord(QLatin1String keyword) const;
};

/// The tokens of a text of statements; comments are left out. Every character that is no blank and in no
/// comment is in one of them.
[[nodiscard]] std::vector<token> tokensOf(const QString & text);

} // namespace database
