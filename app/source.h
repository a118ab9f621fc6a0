#pragma once

#include "model/object_kind.h"
#include "storage/history.h"
#include "storage/text_places.h"
#include "zk/zk_bool.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace model {
class project;
}

namespace app {

/// The number that stands for the state of a project beside those of its versions, which begin with 1.
inline constexpr int Now = 0;

/// The number of the version that `word` names ("v1", "v2" …, or "now"); nothing when it names none.
[[nodiscard]] std::optional<int> versionNumber(const QString & word);
/// The word for a version, such as "v2" or "now".
[[nodiscard]] QString versionWord(int number);
/// Why `word` cannot name a version, for a wrong command line; empty when it can, or is empty.
[[nodiscard]] QString whyNoVersion(const QString & word);

/// What a command reads: a project file, or a text form, which is a project in memory without versions and
/// with default settings. Which of both it is its content tells, not its name. Every failure is one line
/// "source: reason".
class source
{
public:
    /// Opens the file `name`, or the text on standard input for "-". What it describes is read when it is
    /// asked for.
    [[nodiscard]] zk::ZkBool open(const QString & name);
    /// The same for who wants nothing but the state, which can be whole when the history is damaged: there
    /// are no versions.
    [[nodiscard]] zk::ZkBool openState(const QString & name);

    /// The name that was given.
    [[nodiscard]] const QString & name() const { return m_sName; }
    /// Whether it is a text form.
    [[nodiscard]] bool isText() const { return m_isText; }
    /// The bytes of a text form; empty for a project file.
    [[nodiscard]] const QByteArray & text() const { return m_text; }
    /// Oldest first, as they were when the source was opened; none for a text form.
    [[nodiscard]] const QList<storage::history::version> & versions() const { return m_versions; }
    /// The number of the newest version; 0 without any.
    [[nodiscard]] int newestVersion() const { return static_cast<int>(m_versions.size()); }

    /// Whether the version `number` is there, `Now` included; else why not.
    [[nodiscard]] zk::ZkBool checkVersion(int number) const;

    /// Loads the version `number`, or the state for `Now`, which is the same object each time. A version
    /// bears the name that the project had then, and has no file; its scripts are called by the name of the
    /// state. On failure `project` stays as it was.
    /// @param look see storage::history::load(); it is not called for the state
    [[nodiscard]] zk::ZkBool
    load(int number, std::shared_ptr<model::project> & project,
         const std::function<void(const std::shared_ptr<model::project> &)> & look = {});

    /// Takes `state`, which was loaded from the file, as the state, so that it is not read again.
    void takeState(const std::shared_ptr<model::project> & state) { m_state = state; }

    /// Takes two states of what has no common history as its only version and its state.
    void takeStates(const std::shared_ptr<model::project> & before,
                    const std::shared_ptr<model::project> & state);

    /// Loads the state as one that follows `previous`, for a step between what has no common history: ids
    /// that a text leaves open are those of the objects of that name in `previous`, and the versions of
    /// entities tell what differs. An object of its own each time.
    [[nodiscard]] zk::ZkBool loadAfter(const model::project & previous,
                                       std::shared_ptr<model::project> & project) const;

    /// Where an object of the state that load() has given begins in the text form; nothing for a project
    /// file, and for an object that the state does not have. What loadAfter() gives may have other ids.
    [[nodiscard]] std::optional<storage::text_place> find(model::object_kind kind, long id);

private:
    [[nodiscard]] zk::ZkBool readText(const model::project * previous,
                                      std::shared_ptr<model::project> & project) const;

    QString m_sName;
    bool m_isText = false;
    QByteArray m_text;
    QList<storage::history::version> m_versions;
    std::shared_ptr<model::project> m_state;  ///< null until it is asked for
    std::shared_ptr<model::project> m_before; ///< the only version, of what has no history of its own
    std::optional<storage::text_places> m_places;
};

} // namespace app
