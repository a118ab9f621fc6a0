#pragma once

#include <QByteArray>
#include <QString>

#include <kainjow/mustache.hpp>

namespace app {

/// What a template is filled with.
using page_data = kainjow::mustache::data;
using page_list = kainjow::mustache::list;

// Beside each name a template knows the same with a question mark: whether it holds anything. A template asks
// for it, since a name that one entry of a list does not have would be looked for around the list.

/// Lets `data` tell `text`, a name or a sentence, on one line and without what no page can hold.
void put(page_data & data, const std::string & name, const QString & text);
void put(page_data & data, const std::string & name, qlonglong number);
/// Each entry that another one follows knows it by the name "isMore".
void put(page_data & data, const std::string & name, page_list && entries);
void putFlag(page_data & data, const std::string & name, bool isSo);
/// The same for what is a piece of a page already.
void putRaw(page_data & data, const std::string & name, const QByteArray & piece);

/// A template of the program; what it includes by "{{> NAME}}" is put in its place.
class page_template
{
public:
    /// @param name of the file below resources/document/, without its suffix
    explicit page_template(const QString & name);

    [[nodiscard]] QByteArray fill(const page_data & data);

private:
    kainjow::mustache::mustache m_read;
};

/// A file that is put into the pages as it is, such as "style.css".
[[nodiscard]] QByteArray pageResource(const QString & name);

} // namespace app
