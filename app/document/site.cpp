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

namespace app {

namespace {

/// Entities: a picture of more would show nothing that can be read, and take minutes to lay out.
constexpr qsizetype MostDrawn = 200;

/// A page that all others lead to.
struct main_page
{
    QString page;
    QString text;
};

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

/// Makes one page after the other.
class site_maker
{
public:
    site_maker(const documented_model & of, made_site & made) : m_model(of), m_made(made)
    {
        addMain(true, IndexPage, QStringLiteral("Entities"));
        addMain(hasDiagram(), DiagramPage, QStringLiteral("Diagram"));
        addMain(!of.enumerations().isEmpty(), EnumerationPage, QStringLiteral("Enumerations"));
        addMain(!of.history().empty(), HistoryPage, QStringLiteral("History"));
    }

    void make()
    {
        const QSize diagram = hasDiagram() ? addDiagram() : QSize();
        if (m_model.entities().size() > MostDrawn) {
            m_made.note =
                QStringLiteral("There is no diagram of all entities, since more than %1 make no picture; "
                               "the page of each shows what it is related to")
                    .arg(MostDrawn);
        }
        addPage(IndexPage, QStringLiteral("index"), {}, indexData(m_model, diagram));
        if (!m_model.enumerations().isEmpty()) {
            addPage(EnumerationPage, QStringLiteral("enumerations"), QStringLiteral("Enumerations"),
                    enumerationData(m_model));
        }
        if (!m_model.history().empty()) {
            addPage(HistoryPage, QStringLiteral("history"), QStringLiteral("History"), historyData(m_model));
        }
        page_template entity(QStringLiteral("entity"));
        for (const auto & each : m_model.entities()) {
            addPage(entityPage(each->getId()), entity, each->getName(), entityData(m_model, *each));
        }
        const QString script = QStringLiteral("search.js");
        m_made.files.push_back({script, pageResource(script)});
        m_made.files.push_back({QStringLiteral("search-index.js"), searchIndex(m_model)});
        m_made.files.push_back(
            {QStringLiteral("style.css"),
             pageResource(QStringLiteral("style.css")) + pageResource(QStringLiteral("diagram.css"))});
    }

private:
    [[nodiscard]] bool hasDiagram() const
    {
        return !m_model.entities().isEmpty() && m_model.entities().size() <= MostDrawn;
    }

    void addMain(bool isThere, const QString & page, const QString & text)
    {
        if (isThere) {
            m_mainPages.append({page, text});
        }
    }

    /// The size of the picture.
    QSize addDiagram()
    {
        diagram_picture picture;
        picture.contents = contentsOf(m_model.graph(), m_model.graph().everything());
        picture.places = laidOut(picture.contents);
        m_made.note = picture.places.note;
        const QString title = QStringLiteral("Diagram of ") + m_model.project()->getName();
        const drawn_diagram alone = diagramSvg(picture, title, true, 0);
        m_made.files.push_back({DiagramPicture, alone.svg});
        page_data data;
        putRaw(data, "diagram", diagramSvg(picture, title, false, 0).svg);
        addPage(DiagramPage, QStringLiteral("diagram_page"), QStringLiteral("Diagram"), data);
        return alone.size;
    }

    /// @param title of the page beside the project's name; empty for the first page
    void addPage(const QString & name, const QString & form, const QString & title, const page_data & data)
    {
        page_template body(form);
        addPage(name, body, title, data);
    }

    void addPage(const QString & name, page_template & body, const QString & title, const page_data & data)
    {
        page_list navigation;
        for (const main_page & each : m_mainPages) {
            page_data entry;
            put(entry, "navigationPage", each.page);
            put(entry, "navigationText", each.text);
            putFlag(entry, "isCurrent", each.page == name);
            navigation.push_back(entry);
        }
        page_data page;
        const QString project = m_model.project()->getName();
        put(page, "projectName", project);
        put(page, "pageTitle", title.isEmpty() ? project : title);
        putFlag(page, "isPart", !title.isEmpty());
        put(page, "navigation", std::move(navigation));
        putRaw(page, "pageBody", body.fill(data));
        m_made.files.push_back({name, m_frame.fill(page)});
    }

    const documented_model & m_model;
    made_site & m_made;
    QList<main_page> m_mainPages;
    page_template m_frame{QStringLiteral("page")};
};

} // namespace

zk::ZkBool makeSite(source & of, plugin::statement_source & statements, const QStringList & databases,
                    made_site & made)
{
    documented_model model;
    if (const zk::ZkBool read = model.read(of, statements, databases); !read) {
        return read;
    }
    made.entities = model.entities().size();
    site_maker(model, made).make();
    return zk::ZkBool::success();
}

} // namespace app
