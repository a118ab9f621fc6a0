#pragma once

#include <QString>
#include <QStringView>

#include <string_view>
#include <vector>

namespace database {

enum class token_kind
{
    word,   ///< what stands between blanks and the marks below, such as a name, a keyword, a number
    quoted, ///< a name in quotation marks
    text,   ///< a string in apostrophes
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
    QStringView inside;  ///< as it is written, without the marks around it
    QChar quote;         ///< that a quoted name began with
    qsizetype begin = 0; ///< where it stands in the text, quotation marks included
    qsizetype end = 0;

    /// Whether it is that word, in any case of A to Z.
    [[nodiscard]] bool isWord(std::string_view keyword) const
    {
        // Most words differ in their length from most keywords, of which each is compared with many.
        return kind == token_kind::word && static_cast<std::size_t>(inside.size()) == keyword.size() &&
               hasLettersOf(keyword);
    }
    /// What it says: marks that are written twice inside are single.
    [[nodiscard]] QString text() const;

private:
    /// Of a keyword that is as long as the token.
    [[nodiscard]] bool hasLettersOf(std::string_view keyword) const;
};

/// The tokens of a text of statements; comments are left out. Every character that is no blank and in no
/// comment is in one of them. They are parts of `text`, which has to outlive them.
[[nodiscard]] std::vector<token> tokensOf(QStringView text);
/// The same in the place of what `tokens` has, whose room is used again.
void readTokens(QStringView text, std::vector<token> & tokens);

} // namespace database
