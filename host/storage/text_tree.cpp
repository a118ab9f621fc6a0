#include "storage/text_tree.h"

#include "storage/texts.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <unordered_set>
#include <utility>

#include <nlohmann/json.hpp>

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

/// The names of the fields of one object, as far as it was read.
class name_set
{
public:
    /// Whether `name` is a new one. `fields` are those that were added before.
    bool add(const value::object & fields, const std::string & name)
    {
        constexpr std::size_t many = 32; // where a look at each costs more than a table
        if (fields.size() < many) {
            return std::none_of(fields.begin(), fields.end(),
                                [&name](const member & m) { return m.name == name; });
        }
        if (m_names.empty()) {
            for (const member & m : fields) {
                m_names.insert(m.name);
            }
        }
        return m_names.insert(name).second;
    }

private:
    std::unordered_set<std::string> m_names;
};

/// Builds the tree from the parser's events.
class tree_builder : public nlohmann::json_sax<json>
{
public:
    tree_builder(const QByteArray & text, const given_away * entries) : m_text(text), m_pEntries(entries) {}

    value takeRoot() { return std::move(m_root); }

    bool null() override { return put({nullptr}); }
    bool boolean(bool v) override { return put({v}); }
    bool number_integer(number_integer_t v) override { return put({std::int64_t(v)}); }
    bool number_unsigned(number_unsigned_t v) override { return put({std::uint64_t(v)}); }
    bool number_float(number_float_t v, const string_t &) override { return put({double(v)}); }
    bool string(string_t & v) override { return put({v}); }
    bool binary(binary_t &) override { return false; }
    bool start_object(std::size_t) override
    {
        constexpr std::size_t usual = 8;
        value::object fields;
        fields.reserve(usual);
        return open({std::move(fields)});
    }
    bool start_array(std::size_t) override { return open({value::list()}); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(string_t & name) override
    {
        frame & top = m_stack.back();
        auto & fields = std::get<value::object>(top.node->content);
        if (!top.names.add(fields, name)) {
            throw text_error{{place(), texts::tr("field '%1' is given twice")
                                           .arg(model_check::printable(QString::fromStdString(name)))}};
        }
        fields.push_back({name, {}});
        return true;
    }

    bool parse_error(std::size_t position, const std::string &, const json::exception & e) override
    {
        throw text_error{{lineAndColumn(m_text, static_cast<qsizetype>(position)), reasonOf(e)}};
    }

private:
    struct frame
    {
        value * node;
        name_set names; ///< of an object
    };

    bool put(value && v)
    {
        add(std::move(v));
        return true;
    }
    value * add(value && v)
    {
        if (m_stack.empty()) {
            m_root = std::move(v);
            return &m_root;
        }
        value & parent = *m_stack.back().node;
        if (auto * const list = std::get_if<value::list>(&parent.content)) {
            list->push_back(std::move(v));
            return &list->back();
        }
        value & field = std::get<value::object>(parent.content).back().content;
        field = std::move(v);
        return &field;
    }
    bool open(value && container)
    {
        if (m_stack.size() >= DepthLimit) {
            throw text_error{{place(), texts::tr("is nested deeper than %1 levels").arg(DepthLimit)}};
        }
        m_stack.push_back({add(std::move(container)), {}});
        return true;
    }
    bool close()
    {
        const value & closed = *m_stack.back().node;
        m_stack.pop_back();
        if (m_pEntries && isGivenAway(closed)) {
            m_pEntries->take(std::get<value::list>(m_stack[1].node->content).size() - 1, closed);
            std::get<value::list>(m_stack.back().node->content).pop_back();
        }
        return true;
    }
    /// Whether `closed`, which has just been read, is an object in an inner list.
    [[nodiscard]] bool isGivenAway(const value & closed) const
    {
        constexpr std::size_t depth = 4; // root, outer list, its entry, inner list
        return m_stack.size() == depth && closed.as<value::object>() && m_stack[3].node->as<value::list>() &&
               fieldIn(0) == m_pEntries->outer && fieldIn(2) == m_pEntries->inner;
    }
    /// The field that is being read in the object of frame `i`; empty in a list.
    [[nodiscard]] std::string_view fieldIn(std::size_t i) const
    {
        const auto * const fields = m_stack[i].node->as<value::object>();
        return fields && !fields->empty() ? std::string_view(fields->back().name) : std::string_view();
    }

    /// The list entries and fields being read, such as "entities[0] 'customer' / metaData".
    [[nodiscard]] QString place() const
    {
        constexpr std::size_t shown = 8; // a text can be nested deeper than anybody wants to read
        QStringList parts;
        for (std::size_t i = 1; i < std::min(m_stack.size(), shown); ++i) {
            const std::string_view name = fieldIn(i - 1);
            const QString field =
                model_check::printable(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
            const auto * const list = m_stack[i].node->as<value::list>();
            if (list && !list->empty()) {
                parts.append(model_check::placeOf(field, static_cast<qsizetype>(list->size()) - 1,
                                                  nameIn(list->back())));
            } else if (!list && !field.isEmpty()) {
                parts.append(field);
            }
        }
        return parts.join(QStringLiteral(" / "));
    }

    const QByteArray & m_text;
    const given_away * m_pEntries;
    value m_root;
    std::vector<frame> m_stack;
};

} // namespace

const value * value::find(std::string_view name) const
{
    if (const auto * const fields = as<object>()) {
        const auto it =
            std::find_if(fields->begin(), fields->end(), [name](const member & m) { return m.name == name; });
        return it == fields->end() ? nullptr : &it->content;
    }
    return nullptr;
}

value parse(const QByteArray & text, const given_away * entries)
{
    refuseOtherForms(text);
    // The parser takes this byte for the end of the text and would not look at what follows.
    if (const qsizetype nul = text.indexOf('\0'); nul >= 0) {
        throw text_error{
            {lineAndColumn(text, nul + 1), texts::tr("contains a NUL byte, which JSON does not allow")}};
    }
    tree_builder builder(text, entries);
    json::sax_parse(text.constData(), text.constData() + text.size(), &builder);
    return builder.takeRoot();
}

QString nameIn(const value & object)
{
    const value * const name = object.find("name");
    const auto * const text = name ? name->as<std::string>() : nullptr;
    return text ? QString::fromStdString(*text) : QString();
}

} // namespace storage::text_tree
