// The diagram as a file: SVG and PNG, and the dialog that asks for the file.

#include "app/window/diagram/diagram_image.h"
#include "app/window/diagram/diagram_panel.h"
#include "app/window/diagram/diagram_view.h"

#include "support/diagram_models.h"
#include "support/full_disk.h"
#include "support/message_box_answerer.h"
#include "support/project_support.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <sys/stat.h>

using app::diagram_panel;
using support::model_builder;

namespace {

/// What an SVG file says; `error` is empty when it is well-formed.
struct svg_texts
{
    explicit svg_texts(const QString & file)
    {
        QXmlStreamReader reader(support::bytesOf(file));
        while (!reader.atEnd()) {
            if (reader.readNext() != QXmlStreamReader::StartElement) {
                continue;
            }
            if (reader.name() == QLatin1String("svg")) {
                width = reader.attributes().value("width").toString();
                viewBox = reader.attributes().value("viewBox").toString();
            } else if (reader.name() == QLatin1String("title")) {
                title = reader.readElementText();
            } else if (reader.name() == QLatin1String("desc")) {
                description = reader.readElementText();
            } else if (reader.name() == QLatin1String("text")) {
                families << reader.attributes().value("font-family").toString();
                const bool isItalic = reader.attributes().value("font-style") == QLatin1String("italic");
                texts << reader.readElementText().trimmed();
                if (isItalic) {
                    italics << texts.constLast();
                }
            }
        }
        error = reader.hasError() ? reader.errorString() : QString();
        families.removeDuplicates();
    }

    QString error;
    QString width;
    QString viewBox;
    QString title;
    QString description;
    QStringList texts;
    QStringList italics;
    QStringList families;
};

/// The number of pixels of `image` that are not white.
int inkOf(const QImage & image)
{
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            pixels += image.pixel(x, y) != 0xffffffff;
        }
    }
    return pixels;
}

} // namespace

class tst_diagram_save : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_panel = std::make_unique<diagram_panel>();
        m_panel->setLayoutProgram("/nonexistent/dot");
        m_panel->resize(900, 600);
        m_panel->show();
        m_panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    }

    void cleanup()
    {
        m_panel.reset();
        m_folder.reset();
    }

    void writesSvg()
    {
        show(support::smallShop());
        QString reason = "old";
        const QString file = path("shop.svg");
        QVERIFY2(m_panel->saveSvg(file, reason), qPrintable(reason));
        QCOMPARE(reason, "");
        const svg_texts svg(file);
        QCOMPARE(svg.error, "");
        QCOMPARE(svg.title, "shop");
        QCOMPARE(svg.description, "All 4 entities");
        for (const char * const text : {"customer", "order", "product", "note", "name", "buyer", "products",
                                        "PK", "FK", "n:m", "t_order_product"}) {
            QVERIFY2(svg.texts.contains(QLatin1String(text)), text);
        }
        QCOMPARE(svg.texts.count("buyer"), 2); // as a property and on its line
        QCOMPARE(svg.families.size(), 1);
        QVERIFY2(svg.families[0].endsWith(", sans-serif"), qPrintable(svg.families[0]));
        QVERIFY(!svg.families[0].startsWith("Sans Serif"));
    }

    void anSvgShowsAllOfTheDiagram()
    {
        show(support::smallShop());
        QString reason;
        QVERIFY(m_panel->saveSvg(path("shop.svg"), reason));
        QSvgRenderer renderer(path("shop.svg"));
        QVERIFY(renderer.isValid());
        const svg_texts svg(path("shop.svg"));
        const QRectF box = renderer.viewBoxF();
        QCOMPARE(svg.viewBox, QStringLiteral("0 0 %1 %2").arg(box.width()).arg(box.height()));
        QVERIFY(box.width() > 300 && box.width() < 1500);
        QVERIFY2(svg.width.endsWith("mm"), qPrintable(svg.width));
        QVERIFY(qAbs(svg.width.chopped(2).toDouble() - box.width() * 25.4 / 96) < 0.01); // a browser's pixels
        QImage image(box.size().toSize(), QImage::Format_RGB32);
        image.fill(Qt::red); // the picture brings its own ground
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        QCOMPARE(image.pixelColor(2, 2), QColor(Qt::white));
        QCOMPARE(image.pixelColor(image.width() - 3, image.height() - 3), QColor(Qt::white));
        QVERIFY(inkOf(image) > 4000);
        // The boxes reach to the margin on every side, and not over it.
        const int margin = 12;
        QCOMPARE(inkOf(image.copy(0, 0, image.width(), margin)), 0);
        QCOMPARE(inkOf(image.copy(0, 0, margin, image.height())), 0);
        QVERIFY(inkOf(image.copy(0, 0, image.width(), 60)) > 0);
        QVERIFY(inkOf(image.copy(0, 0, 60, image.height())) > 0);
        QVERIFY(inkOf(image.copy(image.width() - 60, 0, 60, image.height())) > 0);
        QVERIFY(inkOf(image.copy(0, image.height() - 60, image.width(), 60)) > 0);
    }

    void whatIsNotInTheTableIsItalic()
    {
        model_builder model = support::smallShop();
        support::entity_builder(model.entity(1)).property(19, "cache", "int").transient();
        show(model);
        QString reason;
        QVERIFY(m_panel->saveSvg(path("x.svg"), reason));
        QCOMPARE(svg_texts(path("x.svg")).italics, QStringList({"t_order_product", "cache"}));
    }

    void anSvgTellsWhatIsNotShown()
    {
        show(support::chainOf(1500));
        QSignalSpy spy(m_panel.get(), &diagram_panel::layoutFinished);
        m_panel->selectEntity(700);
        QVERIFY(spy.wait(20000));
        QString reason;
        QVERIFY(m_panel->saveSvg(path("part.svg"), reason));
        const svg_texts svg(path("part.svg"));
        QCOMPARE(svg.description, "3 of 1,500 entities: the neighbours of e700");
        QCOMPARE(svg.texts.count("+1"), 2);
        QVERIFY(svg.texts.contains("e699") && !svg.texts.contains("e698"));
    }

    void textsThatFitAreWhole()
    {
        model_builder model;
        QStringList names;
        for (int i = 1; i <= 24; ++i) { // of all widths up to the largest box
            names << QString("w-i_").repeated(6).left(i) + QString::number(i);
            model.entity(i, names.constLast()).property(i, names.constLast() + "p", "int");
        }
        show(model);
        QString reason;
        QVERIFY(m_panel->saveSvg(path("x.svg"), reason));
        const svg_texts svg(path("x.svg"));
        for (const QString & name : std::as_const(names)) {
            QVERIFY2(svg.texts.contains(name), qPrintable(name));
            QVERIFY2(svg.texts.contains(name + "p"), qPrintable(name));
        }
    }

    void namesCannotBreakAnSvg()
    {
        model_builder model(QString("</title><script>&\"%1").arg(QChar(2)));
        model.entity(1, "<b>\"&'")
            .relation(1, "<i>&", 1, model::relationship::many_to_many, 1)
            .linkTable("<u>", "", "", 0);
        model.entity(2, "漢字 Ωμέγα");
        model.entity(3, QString("bell%1").arg(QChar(7)));
        model.entity(4, "font-family=\"x\"");
        show(model);
        QString reason;
        QVERIFY(m_panel->saveSvg(path("x.svg"), reason));
        const svg_texts svg(path("x.svg"));
        QCOMPARE(svg.error, "");
        QCOMPARE(svg.title, "</title><script>&\"\ufffd");
        for (const char * const text : {"<b>\"&'", "<i>&", "<u>", "font-family=\"x\""}) {
            QVERIFY2(svg.texts.contains(QString::fromUtf8(text)), text);
        }
        // A text in several scripts may be several pieces.
        QVERIFY(svg.texts.join(QString()).contains("漢字"));
        QVERIFY(svg.texts.join(QString()).contains("Ωμέγα"));
        QVERIFY(svg.texts.join(QString()).contains("bell\ufffd"));
    }

    void writesPng()
    {
        show(support::smallShop());
        QString reason = "old";
        QVERIFY2(m_panel->savePng(path("shop.png"), reason), qPrintable(reason));
        QVERIFY2(m_panel->saveSvg(path("shop.svg"), reason), qPrintable(reason));
        QCOMPARE(reason, "");
        const QImage image(path("shop.png"));
        const QSizeF size = QSvgRenderer(path("shop.svg")).viewBoxF().size();
        QCOMPARE(image.size(), (size * 2).toSize());
        QCOMPARE(image.dotsPerMeterX(), 7559); // 192 pixels an inch
        QCOMPARE(image.dotsPerMeterY(), 7559);
        QCOMPARE(image.pixelColor(2, 2), QColor(Qt::white));
        QVERIFY(inkOf(image) > 10000);
    }

    void picturesAreLightWhateverThePalette()
    {
        show(support::smallShop());
        QString reason;
        QVERIFY(m_panel->saveSvg(path("light.svg"), reason) && m_panel->savePng(path("light.png"), reason));
        QPalette dark;
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        dark.setColor(QPalette::Text, Qt::white);
        dark.setColor(QPalette::Highlight, Qt::red);
        m_panel->setPalette(dark);
        m_panel->selectEntity(2); // and nothing is marked in them
        QVERIFY(m_panel->saveSvg(path("dark.svg"), reason) && m_panel->savePng(path("dark.png"), reason));
        QCOMPARE(support::bytesOf(path("dark.svg")), support::bytesOf(path("light.svg")));
        QCOMPARE(QImage(path("dark.png")), QImage(path("light.png")));
        QVERIFY(!support::bytesOf(path("light.svg")).isEmpty());
    }

    void aLargePictureIsMadeSmaller()
    {
        app::diagram_picture picture;
        const QString name = "end";
        picture.contents.boxes.resize(2);
        picture.contents.boxes[0].name = picture.contents.boxes[1].name = name;
        picture.places.boxes = {QRectF(0, 0, 110, 30), QRectF(19000, 100, 110, 30)};
        QString reason;
        QVERIFY(app::diagram_image::savePng(picture, m_panel->font(), path("wide.png"), reason));
        const QImage wide(path("wide.png"));
        QCOMPARE(wide.width(), 12000);
        QCOMPARE(reason, QString("The diagram is large: the picture was made smaller, 12,000 × %1 pixels")
                             .arg(wide.height()));
        picture.places.boxes[1] = QRectF(9000, 9000, 110, 30);
        QVERIFY(app::diagram_image::savePng(picture, m_panel->font(), path("square.png"), reason));
        const QImage square(path("square.png"));
        QVERIFY(square.width() * square.height() <= 32'000'000);
        QVERIFY(square.width() * square.height() > 31'500'000);
        QVERIFY(inkOf(square) > 100);
        picture.places.boxes[1] = QRectF(5500, 0, 110, 30);
        QVERIFY(app::diagram_image::savePng(picture, m_panel->font(), path("fits.png"), reason));
        QCOMPARE(reason, "");
    }

    void nothingIsSavedWithoutADiagram()
    {
        QString reason;
        QVERIFY(!m_panel->saveSvg(path("x.svg"), reason));
        QCOMPARE(reason, "There is no diagram to save.");
        reason.clear();
        QVERIFY(!m_panel->savePng(path("x.png"), reason));
        QCOMPARE(reason, "There is no diagram to save.");
        QCOMPARE(files(), QStringList());
    }

    void tellsWhyAFileCannotBeWritten()
    {
        show(support::smallShop());
        const QString file = path("none/shop.svg");
        QString reason;
        QVERIFY(!m_panel->saveSvg(file, reason));
        QCOMPARE(reason, "The diagram was not written to " + file + ": No such file or directory");
        reason.clear();
        QVERIFY(!m_panel->savePng(file, reason));
        QCOMPARE(reason, "The diagram was not written to " + file + ": No such file or directory");
        // What is no file stays what it is.
        QDir(m_folder->path()).mkdir("folder.svg");
        QCOMPARE(mkfifo(QFile::encodeName(path("pipe.svg")).constData(), 0600), 0);
        for (const QString & other : {path("folder.svg"), path("pipe.svg")}) {
            QVERIFY(!m_panel->saveSvg(other, reason));
            QCOMPARE(reason, "The diagram was not written to " + other + ": it exists, but is not a file");
        }
        QVERIFY(QFileInfo(path("folder.svg")).isDir());
        QVERIFY(QFileInfo::exists(path("pipe.svg")) && !QFileInfo(path("pipe.svg")).isFile());
    }

    void aFullDiskLeavesTheFormerFile()
    {
        show(support::smallShop());
        QVERIFY(support::writeBytes(path("a.svg"), "former"));
        QVERIFY(support::writeBytes(path("a.png"), "former"));
        {
            // Whatever fits before the disk is full: the first bytes, or all but the last.
            QString reason;
            QVERIFY(m_panel->saveSvg(path("whole.svg"), reason) &&
                    m_panel->savePng(path("whole.png"), reason));
            for (const rlim_t room : {rlim_t(10), rlim_t(QFileInfo(path("whole.svg")).size() - 1)}) {
                const support::full_disk disk(room);
                QVERIFY(!m_panel->saveSvg(path("a.svg"), reason));
                QCOMPARE(reason, "The diagram was not written to " + path("a.svg") + ": File too large");
            }
            for (const rlim_t room : {rlim_t(10), rlim_t(QFileInfo(path("whole.png")).size() - 1)}) {
                const support::full_disk disk(room);
                QVERIFY(!m_panel->savePng(path("a.png"), reason));
                QCOMPARE(reason, "The diagram was not written to " + path("a.png") + ": File too large");
                QVERIFY(!m_panel->savePng(path("new.png"), reason));
            }
        }
        QCOMPARE(support::bytesOf(path("a.svg")), "former");
        QCOMPARE(support::bytesOf(path("a.png")), "former");
        QCOMPARE(files(),
                 QStringList({"a.png", "a.svg", "whole.png", "whole.svg"})); // and nothing is left over
        QString reason;
        QVERIFY(m_panel->saveSvg(path("a.svg"), reason)); // with room it replaces the file
        QCOMPARE(support::bytesOf(path("a.svg")), support::bytesOf(path("whole.svg")));
    }

    void aProjectHasItsPictureBeside()
    {
        model_builder model = support::smallShop();
        model.project().setName("my/shop");
        model.project().setLocation(m_folder->path());
        show(model);
        QFileDialog * const dialog = ask();
        QCOMPARE(dialog->windowTitle(), "Save diagram");
        QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(dialog->nameFilters(), QStringList({"SVG picture (*.svg)", "PNG picture (*.png)"}));
        QCOMPARE(QDir(dialog->directory()).absolutePath(), m_folder->path());
        QCOMPARE(nameField(dialog)->text(), "my_shop.svg");
        QTest::keyClick(nameField(dialog), Qt::Key_Return);
        QTRY_COMPARE(files(), QStringList("my_shop.svg"));
        QCOMPARE(note(), "Saved as " + path("my_shop.svg"));
        QCOMPARE(svg_texts(path("my_shop.svg")).error, "");
    }

    void rememberTheFolderWhileTheProjectStays()
    {
        QVERIFY(QDir(m_folder->path()).mkdir("pictures") && QDir(m_folder->path()).mkdir("other"));
        model_builder model = support::smallShop();
        model.project().setLocation(m_folder->path());
        show(model);
        save(ask(), path("pictures/a.svg"));
        QTRY_VERIFY(QFile::exists(path("pictures/a.svg")));
        show(model); // the file was read again
        QFileDialog * const again = ask();
        QCOMPARE(QDir(again->directory()).absolutePath(), path("pictures"));
        again->reject();
        model.project().setLocation(path("other"));
        show(model); // another file
        QCOMPARE(QDir(ask()->directory()).absolutePath(), path("other"));
    }

    void theDialogAddsTheSuffix_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("file");
        const QString svg = "SVG picture (*.svg)";
        const QString png = "PNG picture (*.png)";
        QTest::newRow("svg") << svg << "a"
                             << "a.svg";
        QTest::newRow("png") << png << "a"
                             << "a.png";
        QTest::newRow("svg given") << svg << "a.svg"
                                   << "a.svg";
        QTest::newRow("the suffix counts, not the filter") << svg << "a.png"
                                                           << "a.png";
        QTest::newRow("the other way round") << png << "a.svg"
                                             << "a.svg";
        QTest::newRow("capitals") << svg << "a.PNG"
                                  << "a.PNG";
        QTest::newRow("another suffix") << svg << "shop.v2"
                                        << "shop.v2.svg";
        QTest::newRow("another suffix, png") << png << "shop.v2"
                                             << "shop.v2.png";
    }
    void theDialogAddsTheSuffix()
    {
        QFETCH(QString, filter);
        QFETCH(QString, typed);
        QFETCH(QString, file);
        show(support::smallShop());
        QFileDialog * const dialog = ask();
        auto * const types = dialog->findChild<QComboBox *>("fileTypeCombo");
        types->setFocus();
        if (types->currentText() != filter) {
            QTest::keyClick(types, Qt::Key_Down);
        }
        QCOMPARE(types->currentText(), filter);
        save(dialog, path(typed));
        QTRY_COMPARE(files(), QStringList(file));
        const bool isPng = file.endsWith(".png", Qt::CaseInsensitive);
        QCOMPARE(QImage(path(file), "PNG").isNull(), !isPng);
        QCOMPARE(support::bytesOf(path(file)).startsWith("<?xml"), !isPng);
        QCOMPARE(note(), "Saved as " + path(file));
        // The next time the dialog begins there.
        QCOMPARE(QDir(ask()->directory()).absolutePath(), m_folder->path());
    }

    void asksBeforeItReplacesAFile_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("file");
        QTest::newRow("as typed") << "a.svg"
                                  << "a.svg";
        QTest::newRow("with the suffix") << "a"
                                         << "a.svg";
        QTest::newRow("with a suffix of ours") << "shop.v2"
                                               << "shop.v2.svg";
    }
    void asksBeforeItReplacesAFile()
    {
        QFETCH(QString, typed);
        QFETCH(QString, file);
        show(support::smallShop());
        QVERIFY(support::writeBytes(path(file), "former"));
        {
            support::message_box_answerer no(QMessageBox::No);
            QFileDialog * const dialog = ask();
            save(dialog, path(typed));
            QTRY_COMPARE(no.asked, 1);
            QVERIFY(no.text.contains(file));
            QTest::qWait(30);
            QCOMPARE(support::bytesOf(path(file)), "former");
            m_panel->findChild<QFileDialog *>() ? dialog->reject() : void();
            QTRY_VERIFY(!m_panel->findChild<QFileDialog *>());
        }
        support::message_box_answerer yes(QMessageBox::Yes);
        save(ask(), path(typed));
        QTRY_VERIFY(support::bytesOf(path(file)).startsWith("<?xml"));
        QCOMPARE(yes.asked, 1);
        QCOMPARE(files(), QStringList(file));
    }

    void aCancelledDialogSavesNothing()
    {
        show(support::smallShop());
        QFileDialog * const dialog = ask();
        QTest::keyClicks(nameField(dialog), path("a.svg"));
        QTest::keyClick(dialog, Qt::Key_Escape);
        QTRY_VERIFY(!m_panel->findChild<QFileDialog *>());
        QCOMPARE(files(), QStringList());
        QVERIFY(note() != "Saved as " + path("a.svg"));
    }

    void aFailureIsShown()
    {
        show(support::smallShop());
        QFileDialog * const dialog = ask();
        support::message_box_answerer ok(QMessageBox::Ok);
        {
            const support::full_disk disk(10);
            save(dialog, path("a.svg"));
            QTRY_COMPARE(ok.asked, 1);
        }
        QCOMPARE(ok.title, "Korvane - Diagram");
        QCOMPARE(ok.text, "The diagram was not written to " + path("a.svg") + ": File too large");
        QCOMPARE(ok.icon, QMessageBox::Warning);
        QVERIFY(ok.hadParent);
        QCOMPARE(files(), QStringList());
        QVERIFY(note() != "Saved as " + path("a.svg"));
    }

    void theProjectMayGoWhileTheDialogAsks()
    {
        show(support::smallShop());
        QFileDialog * const dialog = ask();
        m_panel->setProject(nullptr);
        support::message_box_answerer ok(QMessageBox::Ok);
        save(dialog, path("a.svg"));
        QTRY_COMPARE(ok.asked, 1);
        QCOMPARE(ok.text, "There is no diagram to save.");
        QCOMPARE(files(), QStringList());
        show(support::smallShop());
        ask();
        m_panel.reset(); // and the panel
    }

private:
    void show(const model_builder & model)
    {
        QSignalSpy spy(m_panel.get(), &diagram_panel::layoutFinished);
        m_panel->setProject(model.get());
        QVERIFY(spy.wait(20000));
        while (m_panel->findChild<QLabel *>("m_lblShown")->text() == "Laying out…") {
            QVERIFY(spy.wait(20000));
        }
    }
    [[nodiscard]] QString path(const QString & name) const { return m_folder->filePath(name); }
    /// All files of the folder, hidden ones as well.
    [[nodiscard]] QStringList files() const
    {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    [[nodiscard]] QString note() const { return m_panel->findChild<QLabel *>("m_lblNote")->text(); }
    QFileDialog * ask()
    {
        if (!QTest::qWaitFor([this] { return !m_panel->findChild<QFileDialog *>(); })) {
            qFatal("the former dialog is still there");
        }
        m_panel->findChild<QAction *>("m_actSaveDiagram")->trigger();
        auto * const dialog = m_panel->findChild<QFileDialog *>("m_dlgSaveDiagram");
        if (!dialog || !QTest::qWaitForWindowExposed(dialog)) {
            qFatal("no dialog asks for a file");
        }
        return dialog;
    }
    static QLineEdit * nameField(QFileDialog * dialog)
    {
        return dialog->findChild<QLineEdit *>("fileNameEdit");
    }
    static void save(QFileDialog * dialog, const QString & file)
    {
        nameField(dialog)->setFocus();
        nameField(dialog)->selectAll();
        QTest::keyClicks(nameField(dialog), file);
        if (QWidget * const completions = QApplication::activePopupWidget()) {
            QTest::keyClick(completions, Qt::Key_Escape);
        }
        QCOMPARE(nameField(dialog)->text(), file);
        QTest::keyClick(nameField(dialog), Qt::Key_Return);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<diagram_panel> m_panel;
};

QTEST_MAIN(tst_diagram_save)
#include "tst_diagram_save.moc"
