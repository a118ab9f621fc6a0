// The schema of the text form and its reader, held against each other: whatever is changed in a text that has
// every field, what the reader takes is valid by the schema, and what it refuses is invalid, but for what a
// schema cannot say.

#include "support/json_schema.h"
#include "support/project_support.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace {

using changed_value = std::function<void(const QString & what, const QJsonValue & whole)>;

/// What is put in the place of every value, one after the other.
const QList<std::pair<QString, QJsonValue>> Others = {
    {QStringLiteral("null"), QJsonValue()},
    {QStringLiteral("true"), true},
    {QStringLiteral("false"), false},
    {QStringLiteral("0"), 0},
    {QStringLiteral("1"), 1},
    {QStringLiteral("-1"), -1},
    {QStringLiteral("999"), 999},
    {QStringLiteral("2^53"), 9007199254740992.0},
    {QStringLiteral("1.5"), 1.5},
    {QStringLiteral("\"\""), QString()},
    {QStringLiteral("\"x\""), QStringLiteral("x")},
    {QStringLiteral("\"a/b\""), QStringLiteral("a/b")},
    {QStringLiteral("\"a\\b\""), QStringLiteral("a\\b")},
    {QStringLiteral("a control character"), QStringLiteral("a\u0001b")},
    {QStringLiteral("\"CON\""), QStringLiteral("CON")},
    {QStringLiteral("\"one-to-one\""), QStringLiteral("one-to-one")},
    {QStringLiteral("[]"), QJsonArray()},
    {QStringLiteral("[\"x\"]"), QJsonArray{QStringLiteral("x")}},
    {QStringLiteral("[\"\"]"), QJsonArray{QString()}},
    {QStringLiteral("[1]"), QJsonArray{1}},
    {QStringLiteral("{}"), QJsonObject()},
    {QStringLiteral("{\"name\": \"x\"}"), QJsonObject{{QStringLiteral("name"), QStringLiteral("x")}}},
};

/// Calls `found` for every change of one thing in `value`: a value that becomes another, a field that goes,
/// comes or gets another name, an element that goes or stands twice.
void changeEach(const QString & place, const QJsonValue & value, const changed_value & found)
{
    for (const auto & [name, other] : Others) {
        found(place + QStringLiteral(" = ") + name, other);
    }
    const QJsonObject object = value.toObject();
    for (const QString & key : object.keys()) {
        const QString below = place + QLatin1Char('/') + key;
        QJsonObject without = object;
        without.remove(key);
        found(below + QStringLiteral(" removed"), without);
        without.insert(key + QLatin1Char('s'), object[key]);
        found(below + QStringLiteral(" renamed"), without);
        changeEach(below, object[key], [&](const QString & what, const QJsonValue & changed) {
            QJsonObject whole = object;
            whole.insert(key, changed);
            found(what, whole);
        });
    }
    const QJsonArray array = value.toArray();
    for (qsizetype i = 0; i < array.size(); ++i) {
        const QString below = place + QLatin1Char('/') + QString::number(i);
        QJsonArray without = array;
        without.removeAt(i);
        found(below + QStringLiteral(" removed"), without);
        QJsonArray twice = array;
        twice.insert(i, array[i]);
        found(below + QStringLiteral(" twice"), twice);
        changeEach(below, array[i], [&](const QString & what, const QJsonValue & changed) {
            QJsonArray whole = array;
            whole.replace(i, changed);
            found(what, whole);
        });
    }
}

/// What a schema cannot say, as the reader tells it: that two things have one id, that something is not
/// there, which names of types are integers, and which names a project cannot have on other systems.
const char * const Unsayable[] = {
    "is used twice",
    "does not exist",
    "works only with integer types",
    "is a reserved device name",
};

bool isUnsayable(const QString & reason)
{
    return std::any_of(std::begin(Unsayable), std::end(Unsayable),
                       [&reason](const char * each) { return reason.contains(QLatin1String(each)); });
}

} // namespace

class tst_text_schema : public QObject
{
    Q_OBJECT

private slots:
    void readerAndSchemaAgree();
};

void tst_text_schema::readerAndSchemaAgree()
{
    if (!support::hasSchemaValidator()) {
        QSKIP("python3-jsonschema is not installed");
    }
    QFile file(QStringLiteral(KORVANE_SOURCE_DIR "/tests/host/every_field.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    const QJsonObject whole = QJsonDocument::fromJson(text).object();
    QCOMPARE(support::errorOf(text), QString());

    const QTemporaryDir folder;
    QStringList names;
    QStringList changes;
    QStringList reasons;
    changeEach(QString(), whole, [&](const QString & what, const QJsonValue & changed) {
        // A document is an object or a list.
        if (!changed.isObject() && !changed.isArray()) {
            return;
        }
        const QByteArray document =
            (changed.isObject() ? QJsonDocument(changed.toObject()) : QJsonDocument(changed.toArray()))
                .toJson(QJsonDocument::Compact);
        names << folder.filePath(QString::number(names.size()));
        changes << what;
        reasons << support::errorOf(document);
        QFile out(names.constLast());
        QVERIFY(out.open(QIODevice::WriteOnly) && out.write(document) == document.size());
    });
    QVERIFY(names.size() > 1000);

    const QByteArray errors = support::schemaErrors(QStringLiteral("project.schema.json"), names);
    QVERIFY2(!errors.startsWith("the validator failed"), errors.constData());
    QSet<QString> invalid;
    for (const QByteArray & line : errors.split('\n')) {
        invalid.insert(QString::fromUtf8(line.split(' ').constFirst()));
    }
    int taken = 0;
    int refused = 0;
    QStringList wrong;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const bool isValid = !invalid.contains(names[i]);
        (reasons[i].isEmpty() ? taken : refused)++;
        if (isValid != reasons[i].isEmpty() && !(isValid && isUnsayable(reasons[i]))) {
            wrong << QStringLiteral("%1: the schema %2, the reader %3")
                         .arg(changes[i], isValid ? QStringLiteral("takes it") : QStringLiteral("refuses it"),
                              reasons[i].isEmpty() ? QStringLiteral("takes it") : reasons[i]);
        }
    }
    for (const QString & each : std::as_const(wrong)) {
        qWarning("%s", qPrintable(each));
    }
    QCOMPARE(wrong.size(), qsizetype(0));
    // Both kinds were tried.
    QVERIFY(taken > 100);
    QVERIFY(refused > 500);
}

QTEST_GUILESS_MAIN(tst_text_schema)
#include "tst_text_schema.moc"
