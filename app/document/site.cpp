#include "app/document/site.h"

#include "app/diagram/diagram_layout.h"
#include "app/document/diagram_svg.h"
#include "app/document/documented_model.h"
#include "app/document/entity_page.h"
#include "app/document/overview_pages.h"
#include "app/document/page_names.h"
#include "app/document/search_index.h"

#include "model/project.h"

#include <QEventLoop>

#include <map>
#include <memory>
#include <string>

namespace app {

namespace {

/// Entities. Of 500 that refer to near ones and to a few that all know, dot was not done after a minute, and
/// a grid of so many shows nothing that can be read.
constexpr qsizetype MostDrawn = 200;

/// Where the boxes and lines of `contents` stand.
diagram_places laidOut(const diagram_contents & contents)
{
    diagram_layout layout;
    diagram_places places;
    QEventLoop wait;
    QObject::connect(&layout, &diagram_layout::finished, &wait, [&](const diagram_places & found) {
        places = found;
        wait.quit();
    });
    layout.start(requestOf(contents));
    wait.exec();
    return places;
}

/// The pages of one model; each is made when it is asked for.
class site_pages
{
public:
    [[nodiscard]] zk::ZkBool read(source & of, plugin::statement_source & statements,
                                  const QStringList & databases)
    {
        return m_model.read(of, statements, databases);
    }

    [[nodiscard]] const documented_model & model() const { return m_model; }
    [[nodiscard]] bool hasDiagram() const
    {
        return !m_model.entities().isEmpty() && m_model.entities().size() <= MostDrawn;
    }
    [[nodiscard]] bool hasEnumerations() const { return !m_model.enumerations().isEmpty(); }
    [[nodiscard]] bool hasHistory() const { return !m_model.history().empty(); }

    /// Lays the diagram out; one line about what is not as it should.
    [[nodiscard]] QString layOut()
    {
        m_picture.contents = contentsOf(m_model.graph(), m_model.graph().everything());
        m_picture.places = laidOut(m_picture.contents);
        return m_picture.places.note;
    }

    [[nodiscard]] QByteArray index()
    {
        return page(IndexPage, "index", {}, indexData(m_model, hasDiagram() ? picture(true).size : QSize()));
    }
    [[nodiscard]] QByteArray diagram()
    {
        page_data data;
        putRaw(data, "diagram", picture(false).svg);
        return page(DiagramPage, "diagram_page", QStringLiteral("Diagram"), data);
    }
    [[nodiscard]] drawn_diagram picture(bool isAlone) const
    {
        return diagramSvg(m_picture, QStringLiteral("Diagram of ") + m_model.project()->getName(), isAlone,
                          0);
    }
    [[nodiscard]] QByteArray enumerations()
    {
        return page(EnumerationPage, "enumerations", QStringLiteral("Enumerations"),
                    enumerationData(m_model));
    }
    [[nodiscard]] QByteArray history()
    {
        return page(HistoryPage, "history", QStringLiteral("History"), historyData(m_model));
    }
    [[nodiscard]] QByteArray entity(const model::entity & entity)
    {
        return page(entityPage(entity.getId()), "entity", entity.getName(), entityData(m_model, entity));
    }

private:
    /// The pages that all others lead to.
    [[nodiscard]] page_list navigation(const QString & current) const
    {
        page_list entries;
        const auto add = [&](bool isThere, const QString & name, const QString & text) {
            page_data entry;
            put(entry, "navigationPage", name);
            put(entry, "navigationText", text);
            putFlag(entry, "isCurrent", name == current);
            if (isThere) {
                entries.push_back(entry);
            }
        };
        add(true, IndexPage, QStringLiteral("Entities"));
        add(hasDiagram(), DiagramPage, QStringLiteral("Diagram"));
        add(hasEnumerations(), EnumerationPage, QStringLiteral("Enumerations"));
        add(hasHistory(), HistoryPage, QStringLiteral("History"));
        return entries;
    }

    /// @param title of the page beside the project's name; empty for the first page
    [[nodiscard]] QByteArray page(const QString & name, const char * form, const QString & title,
                                  const page_data & data)
    {
        const QString project = m_model.project()->getName();
        page_data frame;
        put(frame, "projectName", project);
        put(frame, "pageTitle", title.isEmpty() ? project : title);
        putFlag(frame, "isPart", !title.isEmpty());
        put(frame, "navigation", navigation(name));
        putRaw(frame, "pageBody", templateOf(form).fill(data));
        return templateOf("page").fill(frame);
    }

    page_template & templateOf(const char * name)
    {
        const auto found = m_templates.try_emplace(name, QString::fromLatin1(name)).first;
        return found->second;
    }

    documented_model m_model;
    diagram_picture m_picture;
    std::map<std::string, page_template> m_templates; ///< read once each
};

QByteArray style()
{
    return pageResource(QStringLiteral("style.css")) + pageResource(QStringLiteral("diagram.css"));
}

/// The files of `pages`, which live as long as these.
std::vector<site_file> filesOf(const std::shared_ptr<site_pages> & pages)
{
    std::vector<site_file> files;
    files.push_back({IndexPage, [pages] { return pages->index(); }});
    if (pages->hasDiagram()) {
        files.push_back({DiagramPage, [pages] { return pages->diagram(); }});
        files.push_back({DiagramPicture, [pages] { return pages->picture(true).svg; }});
    }
    if (pages->hasEnumerations()) {
        files.push_back({EnumerationPage, [pages] { return pages->enumerations(); }});
    }
    if (pages->hasHistory()) {
        files.push_back({HistoryPage, [pages] { return pages->history(); }});
    }
    for (const auto & entity : pages->model().entities()) {
        files.push_back({entityPage(entity->getId()), [pages, entity] { return pages->entity(*entity); }});
    }
    const QString script = QStringLiteral("search.js");
    files.push_back({script, [script] { return pageResource(script); }});
    files.push_back({QStringLiteral("search-index.js"), [pages] { return searchIndex(pages->model()); }});
    files.push_back({QStringLiteral("style.css"), &style});
    return files;
}

} // namespace

zk::ZkBool makeSite(source & of, plugin::statement_source & statements, const QStringList & databases,
                    made_site & made)
{
    const auto pages = std::make_shared<site_pages>();
    if (const zk::ZkBool read = pages->read(of, statements, databases); !read) {
        return read;
    }
    made.entities = pages->model().entities().size();
    if (pages->hasDiagram()) {
        made.note = pages->layOut();
    } else if (made.entities > 0) {
        made.note = QStringLiteral("There is no diagram of all entities, since more than %1 make no picture; "
                                   "the page of each shows what it is related to")
                        .arg(MostDrawn);
    }
    made.files = filesOf(pages);
    return zk::ZkBool::success();
}

} // namespace app
