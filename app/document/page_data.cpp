#include "app/document/page_data.h"

#include "app/diagram/diagram_contents.h"

#include <QFile>
#include <QRegularExpression>

namespace app {

namespace {

constexpr char Question = '?';

std::string templateText(const QString & name)
{
    QString text = QString::fromUtf8(pageResource(name + QStringLiteral(".mustache")));
    static const QRegularExpression included(QStringLiteral(R"(\{\{> (\w+)\}\})"));
    for (QRegularExpressionMatch match = included.match(text); match.hasMatch();
         match = included.match(text)) {
        const QByteArray piece = pageResource(match.captured(1) + QStringLiteral(".mustache"));
        text.replace(match.capturedStart(), match.capturedLength(), QString::fromUtf8(piece).trimmed());
    }
    return text.toStdString();
}

} // namespace

void put(page_data & data, const std::string & name, const QString & text)
{
    putRaw(data, name, drawable(text).toUtf8());
}

void put(page_data & data, const std::string & name, qlonglong number)
{
    putRaw(data, name, QByteArray::number(number));
}

void put(page_data & data, const std::string & name, page_list && entries)
{
    putFlag(data, name + Question, !entries.empty());
    for (page_data & entry : entries) {
        putFlag(entry, "isMore", &entry != &entries.back());
    }
    data[name] = page_data(entries);
}

void putFlag(page_data & data, const std::string & name, bool isSo)
{
    data[name] = page_data(isSo);
}

void putRaw(page_data & data, const std::string & name, const QByteArray & piece)
{
    putFlag(data, name + Question, !piece.isEmpty());
    data[name] = page_data(piece.toStdString());
}

page_template::page_template(const QString & name) : m_read(templateText(name))
{
    Q_ASSERT_X(m_read.is_valid(), "page_template", m_read.error_message().c_str());
}

QByteArray page_template::fill(const page_data & data)
{
    return QByteArray::fromStdString(m_read.render(data));
}

QByteArray pageResource(const QString & name)
{
    QFile file(QStringLiteral(":/korvane/document/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace app
