#include "storage/text_tree.h"

#include "storage/texts.h"
#include <QRegularExpression>
#include <QStringList>

#include <vector>

namespace storage::text_tree {

namespace {

using json = nlohmann::json;

constexpr unsigned DepthLimit = 64;

/// "line 3, column 5" of the byte before `position`.
QString lineAndColumn(const QByteArray & text, qsizetype position)
{
    const QByteArray before = text.left(std::max<qsizetype>(position, 1) - 1);
    const qsizetype lineBegin = before.lastIndexOf('\n') + 1;
    return texts::tr("line %1, column %2")
        .arg(before.count('\n') + 1)
        .arg(QString::fromUtf8(before.mid(lineBegin)).size() + 1);
}

/// The parser's own words, which are English, without its numbering and its position.
QString reasonOf(const std::exception & e)
{
    static const QRegularExpression numbering(
        QStringLiteral("^\\[[^\\]]*\\] (parse error at line \\d+, column \\d+: )?"));
    return texts::tr("%1", "the words of the JSON parser")
        .arg(model_check::printable(QString::fromUtf8(e.what()).remove(numbering)));
}

/// The encoding of `text` when it is a wide one, by its mark or by where the first two characters, which JSON
/// has from ASCII, leave their bytes empty; null for UTF-8.
const char * wideEncoding(const QByteArray & text)
{
    const auto at = [&text](qsizetype i) { return i < text.size() ? int(uchar(text.at(i))) : -1; };
    const auto isZero = [&at](qsizetype i) { return at(i) == 0; };
    const auto isFull = [&at](qsizetype i) { return at(i) > 0; };
    if ((at(0) == 0xff && at(1) == 0xfe) || (at(0) == 0xfe && at(1) == 0xff)) {
        return isZero(2) && isZero(3) ? "UTF-32" : "UTF-16";
    }
    if (isZero(0) && isZero(1) && ((at(2) == 0xfe && at(3) == 0xff) || (isZero(2) && isFull(3)))) {
        return "UTF-32";
    }
    if (isFull(0) && isZero(1) && isZero(2) && isZero(3)) {
        return "UTF-32";
    }
    const bool isWide = (isFull(0) && isZero(1) && isFull(2) && isZero(3)) ||
                        (isZero(0) && isFull(1) && isZero(2) && isFull(3));
    return isWide ? "UTF-16" : nullptr;
}

/// Names what somebody may well have taken for a text, in place of the parser's first stumble.
void refuseOtherForms(const QByteArray & text)
{
    if (text.startsWith(QByteArrayLiteral("SQLite format 3\0"))) {
        throw text_error{{QString(), texts::tr("is a project file, not a model in text form; 'korvane "
                                               "dump' writes one")}};
    }
    if (const char * const encoding = wideEncoding(text)) {
        throw text_error{
            {QString(), texts::tr("the text is in %1; save it in UTF-8").arg(QString::fromLatin1(encoding))}};
    }
}

/// Builds the tree from the parser's events.
class tree_builder : public nlohmann::json_sax<json>
{
public:
    explicit tree_builder(const QByteArray & text) : m_text(text) {}

    json takeRoot() { return std::move(m_root); }

    bool null() override { return put(nullptr); }
    bool boolean(bool value) override { return put(value); }
    bool number_integer(number_integer_t value) override { return put(value); }
    bool number_unsigned(number_unsigned_t value) override { return put(value); }
    bool number_float(number_float_t value, const string_t &) override { return put(value); }
    bool string(string_t & value) override { return put(std::move(value)); }
    bool binary(binary_t &) override { return false; }
    bool start_object(std::size_t) override { return open(json::object()); }
    bool start_array(std::size_t) override { return open(json::array()); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(string_t & name) override
    {
        frame & top = m_stack.back();
        if (top.value->contains(name)) {
            throw text_error{{place(), texts::tr("field '%1' is given twice")
                                           .arg(model_check::printable(QString::fromStdString(name)))}};
        }
        top.key = name;
        return true;
    }

    bool parse_error(std::size_t position, const std::string &, const json::exception & e) override
    {
        throw text_error{{lineAndColumn(m_text, static_cast<qsizetype>(position)), reasonOf(e)}};
    }

private:
    struct frame
    {
        json * value;
        std::string key; ///< of an object, the field being read
    };

    template <class T>
    bool put(T && value)
    {
        add(std::forward<T>(value));
        return true;
    }
    json * add(json && value)
    {
        if (m_stack.empty()) {
            m_root = std::move(value);
            return &m_root;
        }
        json & parent = *m_stack.back().value;
        if (parent.is_array()) {
            parent.push_back(std::move(value));
            return &parent.back();
        }
        return &(parent[m_stack.back().key] = std::move(value));
    }
    bool open(json && container)
    {
        if (m_stack.size() >= DepthLimit) {
            throw text_error{{place(), texts::tr("is nested deeper than %1 levels").arg(DepthLimit)}};
        }
        m_stack.push_back({add(std::move(container)), std::string()});
        return true;
    }
    bool close()
    {
        m_stack.pop_back();
        return true;
    }

    /// The list entries and fields being read, such as "entities[0] 'customer' / metaData".
    [[nodiscard]] QString place() const
    {
        constexpr std::size_t shown = 8; // a text can be nested deeper than anybody wants to read
        QStringList parts;
        for (std::size_t i = 1; i < std::min(m_stack.size(), shown); ++i) {
            const json & value = *m_stack[i].value;
            const QString field = model_check::printable(QString::fromStdString(m_stack[i - 1].key));
            if (value.is_array() && !value.empty()) {
                parts.append(model_check::placeOf(field, static_cast<qsizetype>(value.size()) - 1,
                                                  nameIn(value.back())));
            } else if (value.is_object() && !field.isEmpty()) {
                parts.append(field);
            }
        }
        return parts.join(QStringLiteral(" / "));
    }

    const QByteArray & m_text;
    json m_root;
    std::vector<frame> m_stack;
};

} // namespace

json parse(const QByteArray & text)
{
    refuseOtherForms(text);
    // The parser takes this byte for the end of the text and would not look at what follows.
    if (const qsizetype nul = text.indexOf('\0'); nul >= 0) {
        throw text_error{
            {lineAndColumn(text, nul + 1), texts::tr("contains a NUL byte, which JSON does not allow")}};
    }
    tree_builder builder(text);
    json::sax_parse(text.constData(), text.constData() + text.size(), &builder);
    return builder.takeRoot();
}

QString nameIn(const json & object)
{
    const auto name = object.is_object() ? object.find("name") : object.end();
    return name != object.end() && name->is_string()
               ? QString::fromStdString(name->get_ref<const std::string &>())
               : QString();
}

} // namespace storage::text_tree
