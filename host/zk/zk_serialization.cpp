#include "zk/zk_serialization.h"

#include <QLoggingCategory>
#include <QXmlStreamReader>

#include <boost/archive/xml_iarchive.hpp>
#include <boost/archive/xml_oarchive.hpp>
#include <boost/serialization/nvp.hpp>
#include <boost/serialization/split_member.hpp>
#include <boost/serialization/string.hpp>

#include <exception>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <string>

namespace zk::serialization {

namespace {

Q_LOGGING_CATEGORY(log, "zelkon")

constexpr char RootName[] = "zk.ZkCollection-QString_QString-";
constexpr qsizetype SizeLimit =
    qsizetype(8) * 1024 * 1024; // characters; a list of mappings has some thousands

using collection = ZkCollection<QString, QString>;

struct pair_of_texts
{
    std::string first;
    std::string second;

    template <class Archive>
    void serialize(Archive & archive, unsigned)
    {
        archive & BOOST_SERIALIZATION_NVP(first);
        archive & BOOST_SERIALIZATION_NVP(second);
    }
};

bool isXmlCharacter(char32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
           (c >= 0x10000 && c <= 0x10FFFF);
}

std::string toArchive(const QString & text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            if (isXmlCharacter(QChar::surrogateToUcs4(c, text.at(i + 1)))) {
                result += text.mid(i, 2);
            }
            ++i;
        } else if (isXmlCharacter(c.unicode())) {
            result += c;
        }
    }
    return result.toStdString();
}

/// The collection as the archive sees it: a count, then one item a pair.
struct archived_list
{
    collection & list;
    long limit; ///< how many items a reading may take, known to be whole

    template <class Archive>
    void save(Archive & archive, unsigned) const
    {
        const std::lock_guard lock(list.mutex());
        const long count = list.count();
        archive << BOOST_SERIALIZATION_NVP(count);
        for (long i = 0; i < count; ++i) {
            const pair_of_texts item{toArchive(list.getKeyByIndex(i)), toArchive(list.getByIndex(i))};
            archive << BOOST_SERIALIZATION_NVP(item);
        }
    }
    template <class Archive>
    void load(Archive & archive, unsigned)
    {
        long count = 0;
        archive >> BOOST_SERIALIZATION_NVP(count);
        for (long i = 0; i < count && i < limit; ++i) {
            pair_of_texts item;
            archive >> BOOST_SERIALIZATION_NVP(item);
            list.insert(QString::fromStdString(item.first), QString::fromStdString(item.second));
        }
    }
    BOOST_SERIALIZATION_SPLIT_MEMBER()
};

/// Runs `work`, which may throw; false after a line in the log.
bool guarded(const QString & message, const std::function<void()> & work)
{
    QString reason = QStringLiteral("unknown error");
    try {
        work();
        return true;
    } catch (const std::exception & e) {
        reason = QString::fromLocal8Bit(e.what());
    } catch (...) { // NOLINT(bugprone-empty-catch): the text for it stands above
    }
    qCWarning(log, "[Zelkon] %s", qUtf8Printable(QString(message).replace(QStringLiteral("%ERR%"), reason)));
    return false;
}

/// First pass over a text from outside: how many items are whole, and what is wrong with the rest.
class outline
{
public:
    explicit outline(const QString & xml) : m_reader(xml)
    {
        if (xml.size() > SizeLimit) {
            fail(QStringLiteral("the text is too long"));
        } else {
            readRoot();
        }
    }

    [[nodiscard]] long items() const { return m_iItems; }
    [[nodiscard]] bool hasError() const { return m_reader.hasError(); }
    [[nodiscard]] std::string error() const { return m_reader.errorString().toStdString(); }

private:
    /// Goes to the next tag, true when it opens an element. Between tags stands white space only.
    bool step()
    {
        while (!m_reader.atEnd()) {
            const QXmlStreamReader::TokenType token = m_reader.readNext();
            if (token == QXmlStreamReader::StartElement || token == QXmlStreamReader::EndElement) {
                return token == QXmlStreamReader::StartElement;
            }
            // A document type, a comment, an instruction: never written, so never read.
            if (token != QXmlStreamReader::StartDocument && token != QXmlStreamReader::EndDocument &&
                !m_reader.isWhitespace()) {
                m_reader.raiseError(QStringLiteral("only elements are expected"));
            }
        }
        return false;
    }
    bool expectStart(QLatin1StringView name)
    {
        if (!step() || m_reader.name() != name) {
            fail(QStringLiteral("the element '%1' is missing").arg(name));
        }
        return !m_reader.hasError();
    }
    bool expectEnd()
    {
        if (step()) {
            fail(QStringLiteral("an element is one too many"));
        }
        return !m_reader.hasError();
    }
    bool expectText(QLatin1StringView name)
    {
        m_sText = expectStart(name) ? m_reader.readElementText() : QString();
        return !m_reader.hasError();
    }
    bool expectItem()
    {
        return expectStart(QLatin1StringView("item")) && expectText(QLatin1StringView("first")) &&
               expectText(QLatin1StringView("second")) && expectEnd();
    }
    void readRoot()
    {
        if (!expectStart(QLatin1StringView(RootName)) || !expectText(QLatin1StringView("count"))) {
            return;
        }
        bool ok = false;
        const long count = m_sText.trimmed().toLong(&ok);
        if (!ok || count < 0) {
            fail(QStringLiteral("the count is not a number of items"));
            return;
        }
        while (m_iItems < count && expectItem()) {
            ++m_iItems;
        }
        if (!m_reader.hasError() && expectEnd()) {
            expectEnd(); // the document's
        }
    }
    void fail(const QString & reason)
    {
        if (!m_reader.hasError()) {
            m_reader.raiseError(reason);
        }
    }

    QXmlStreamReader m_reader;
    QString m_sText;
    long m_iItems = 0;
};

} // namespace

QString toXml(const ZkCollection<QString, QString> & list)
{
    std::ostringstream stream;
    const bool ok = guarded(QStringLiteral("Serialization error : '%ERR%'"), [&] {
        collection copy(list);
        const archived_list archived{copy, 0};
        boost::archive::xml_oarchive archive(stream, boost::archive::no_header);
        archive << boost::serialization::make_nvp(RootName, archived);
    });
    return ok ? QString::fromStdString(stream.str()) : QString();
}

bool fromXml(const QString & xml, ZkCollection<QString, QString> & list)
{
    collection result;
    const bool ok = guarded(QStringLiteral("Deserialization error : '%ERR%'"), [&] {
        const outline parts(xml);
        if (parts.items() > 0) {
            archived_list archived{result, parts.items()};
            std::istringstream stream(xml.toStdString());
            // Its check of closing tags reads past the end of a name that is longer than expected.
            boost::archive::xml_iarchive archive(stream, boost::archive::no_header |
                                                             boost::archive::no_xml_tag_checking);
            archive >> boost::serialization::make_nvp(RootName, archived);
        }
        if (parts.hasError()) {
            throw std::runtime_error(parts.error());
        }
    });
    list = result;
    return ok;
}

} // namespace zk::serialization
