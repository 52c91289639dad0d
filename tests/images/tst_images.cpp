#include "../common/cancellingdialogs.h"
#include "../common/datarows.h"
#include "../common/enginetest.h"
#include "../common/files.h"
#include "../common/ftpserver.h"
#include "../common/recordingprompts.h"

#include "dialogs/imagedialog.h"
#include "images/imagenames.h"

#include <QCheckBox>
#include <QImage>
#include <QLabel>

#include <VantryHTMLEditor/EditorDialogs.h>

#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>

using namespace Vantry;
using VantryTest::RecordingPrompts;
using VantryTest::writeFile;

namespace {

constexpr int Undo = 5049;

// Answers the image dialog as a user would, after looking at what it shows.
class ImageAnswers : public CancellingDialogs
{
public:
    bool insertImage(ImageDialogValues &values) override
    {
        shown = values;
        values.Cancel = !user;
        if (user)
            user(values);
        return !values.Cancel;
    }
    bool flashProperties(FlashPropertiesValues &values) override
    {
        values.Cancel = !movie;
        if (movie)
            movie(values);
        return !values.Cancel;
    }

    // A host's upload form that only chooses: the files it is given, or chosen.
    bool imageUpload(ImageUploadValues &values) override
    {
        values.Cancel = !uploadChosen;
        if (values.files.isEmpty())
            values.files = chosen;
        return uploadChosen;
    }

    std::function<void(ImageDialogValues &)> user;
    std::function<void(FlashPropertiesValues &)> movie;
    ImageDialogValues shown;
    bool uploadChosen = false;
    QStringList chosen;
};

} // namespace

class tst_Images : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(VantryTest::startEditor(m_editor, m_surface));
        connect(m_editor.get(), &HTMLEditorComponent::ImageInserted, this,
            [this](QVariant &name, QVariant &path) {
                m_events << QStringLiteral("ImageInserted ") + name.toString() + QLatin1Char(' ')
                        + path.toString();
            });
        connect(m_editor.get(), &HTMLEditorComponent::HTMLChanged, this,
            [this] { m_events << QStringLiteral("HTMLChanged"); });
        connect(m_editor.get(), &HTMLEditorComponent::PropertyChanged, this,
            [this](const QString &name) {
                if (name == QLatin1String("isDirty") && m_editor->isDirty())
                    m_events << name;
            });
    }

    void init()
    {
        auto prompts = std::make_unique<RecordingPrompts>();
        m_prompts = prompts.get();
        m_editor->setUserPrompts(std::move(prompts));
        auto dialogs = std::make_unique<ImageAnswers>();
        m_dialogs = dialogs.get();
        m_editor->setEditorDialogs(std::move(dialogs));
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        QVERIFY(QDir(m_dir->path()).mkpath(QStringLiteral("pics")));
        QVERIFY(writeFile(m_dir->filePath(QStringLiteral("pics/a.png")), "new picture"));
        m_editor->setImageDirectory(m_dir->filePath(QStringLiteral("site/img")) + QLatin1Char('/'));
        m_editor->setBaseURL(QString());
        m_editor->setImageVCDirectory(QString());
        m_editor->setCopyImagesWhenInserted(true);
        m_editor->setIncermentExistingFileNames(true);
        m_editor->setChangeImageOnDblClick(false);
    }

    void cleanup()
    {
        QVERIFY2(m_prompts->unexpected.isEmpty(), qPrintable(m_prompts->unexpected.join(u'|')));
    }

    void insertPlacesTheFile_data()
    {
        columns<bool, bool, QString, QString, QString>(
            "copy", "increment", "baseFolder", "fileName", "src");

        // The image folder already holds an a.png.
        row("kept where it is", false, true, "", "", "pics/a.png");
        row("copied under a free name", true, true, "", "a_001.png", "site/img/a_001.png");
        row("copied over the old one", true, false, "", "a.png", "site/img/a.png");
        row("relative to a local base", true, true, "site/", "a_001.png", "img/a_001.png");
    }

    void insertPlacesTheFile()
    {
        auto [copy, increment, baseFolder, fileName, src]
            = fetch<bool, bool, QString, QString, QString>(
                "copy", "increment", "baseFolder", "fileName", "src");
        const QString folder = m_editor->ImageDirectory();
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(writeFile(folder + QStringLiteral("a.png"), "old picture"));
        m_editor->setCopyImagesWhenInserted(copy);
        m_editor->setIncermentExistingFileNames(increment);
        if (!baseFolder.isEmpty())
            m_editor->setBaseURL(
                QUrl::fromLocalFile(m_dir->filePath(baseFolder)).toString() + u'/');
        load(QStringLiteral("<p>text</p>"));
        const QString loaded = body();

        m_prompts->fileNames.enqueue(m_dir->filePath(QStringLiteral("pics/a.png")));
        QString empty;
        QString width = QStringLiteral("40");
        m_editor->InsertImageNoPrompt(
            width, empty, empty, empty, empty, empty, empty, empty, empty);
        const QString expected = baseFolder.isEmpty() ? m_dir->filePath(src) : src;
        QVERIFY2(body().contains(QStringLiteral("src=\"%1\"").arg(expected)), qPrintable(body()));
        QVERIFY2(m_surface->attribute(image(), QStringLiteral("width")).isEmpty(),
            "a picked picture keeps its own size");
        QStringList events{QStringLiteral("isDirty")};
        if (copy) {
            QCOMPARE(VantryTest::readBytes(folder + fileName), QByteArray("new picture"));
            events.prepend(QStringLiteral("HTMLChanged"));
            events.prepend(QStringLiteral("ImageInserted %1 %2").arg(fileName, folder));
        }
        QCOMPARE(m_events, events);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(body(), loaded);
    }

    void failingCopyChangesNothing_data()
    {
        columns<bool, QString, QString, QString>("dialog", "source", "imageDirectory", "message");

        row("missing source", false, "pics/none.png", "site/img/", "there is no such file");
        // A folder under a regular file cannot be made, not even by root.
        row("folder under a file", false, "pics/a.png", "pics/a.png/img/", "cannot be created");
        row("folder under a file, dialog", true, "pics/a.png", "pics/a.png/img/",
            "cannot be created");
    }

    void failingCopyChangesNothing()
    {
        auto [dialog, source, imageDirectory, message] = fetch<bool, QString, QString, QString>(
            "dialog", "source", "imageDirectory", "message");
        m_editor->setImageDirectory(m_dir->filePath(imageDirectory));
        load(QStringLiteral("<p>text</p>"));
        const QString loaded = body();

        const QString path = m_dir->filePath(source);
        if (dialog) {
            m_dialogs->user = [&](ImageDialogValues &values) { values.Source = path; };
            m_editor->InsertImage();
        } else {
            m_prompts->fileNames.enqueue(path);
            QString empty;
            m_editor->InsertImageNoPrompt(
                empty, empty, empty, empty, empty, empty, empty, empty, empty);
        }
        QCOMPARE(body(), loaded);
        QVERIFY(m_events.isEmpty());
        const QStringList errors = m_prompts->texts(RecordingPrompts::Kind::Critical);
        QCOMPARE(errors.size(), 1);
        QVERIFY2(errors.first().contains(message), qPrintable(errors.first()));
    }

    void imageDialogInsertsAndEdits()
    {
        load(QStringLiteral("<p>text</p>"));
        const QString loaded = body();
        const QString picture = m_dir->filePath(QStringLiteral("pics/a.png"));
        m_dialogs->user = [&](ImageDialogValues &values) {
            values.Source = picture;
            values.VSpace = QStringLiteral("5");
            values.HSpace = QStringLiteral("10");
            values.Width = QStringLiteral("30");
            values.Hyperlink = QStringLiteral("http://x.org/");
            values.Target = QStringLiteral("_top");
            values.MouseOverOption = ImageDialogValues::RollOver::Image;
            values.SourceOver = QStringLiteral("o.gif");
        };
        m_editor->InsertImage();
        QCOMPARE(m_dialogs->shown.Source, QString());
        const QString folder = m_editor->ImageDirectory();
        QCOMPARE(m_events,
            QStringList({QStringLiteral("ImageInserted a.png ") + folder,
                QStringLiteral("HTMLChanged"), QStringLiteral("isDirty")}));
        const QString inserted = body();
        QVERIFY2(
            inserted.contains(QStringLiteral("<a href=\"http://x.org/\" target=\"_top\"><img "
                                             "onmouseover=\"this.src='o.gif'\" srcover=\"o.gif\"")),
            qPrintable(inserted));
        QVERIFY(inserted.contains(QStringLiteral("vspace=\"5\" hspace=\"5\"")));
        QVERIFY(inserted.contains(QStringLiteral("src=\"%1a.png\"").arg(folder)));

        // Editing shows the image and its link, and replaces both as one step.
        QVERIFY(m_surface->selectElement(image()));
        m_dialogs->user = [](ImageDialogValues &values) {
            values.Width = QStringLiteral("60");
            values.Hyperlink.clear();
        };
        m_editor->InsertImage();
        QCOMPARE(m_dialogs->shown.Width, QStringLiteral("30"));
        QCOMPARE(m_dialogs->shown.Hyperlink, QStringLiteral("http://x.org/"));
        QCOMPARE(m_dialogs->shown.Target, QStringLiteral("_top"));
        QCOMPARE(m_dialogs->shown.SourceOver, QStringLiteral("o.gif"));
        QCOMPARE(m_dialogs->shown.MouseOverOption, ImageDialogValues::RollOver::Image);
        QVERIFY2(!body().contains(QLatin1String("<a ")), qPrintable(body()));
        QCOMPARE(m_surface->elementsByTagName(QStringLiteral("img")).size(), 1);
        QCOMPARE(m_surface->attribute(image(), QStringLiteral("width")), QStringLiteral("60"));
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(body(), inserted);

        // Cancel changes nothing.
        QVERIFY(m_surface->selectElement(image()));
        m_dialogs->user = nullptr;
        m_editor->InsertImage();
        QCOMPARE(body(), inserted);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(body(), loaded);
    }

    void imageDialogFillsAndCollects()
    {
        const QString picture = m_dir->filePath(QStringLiteral("pics/wide.png"));
        QImage wide(200, 100, QImage::Format_RGB32);
        wide.fill(Qt::red);
        QVERIFY(wide.save(picture));

        Dialogs::ImageDialog dialog([this]() -> UserPrompts & { return *m_prompts; });
        ImageDialogValues values;
        values.Source = picture;
        values.Hyperlink = QStringLiteral("MAILTO:a@b.c");
        values.MouseOverOption = ImageDialogValues::RollOver::Script;
        values.SourceOut = QStringLiteral("out()");
        dialog.setValues(values);
        QCOMPARE(dialog.pictureSize(), QSize(200, 100));
        QCOMPARE(dialog.rollOverLabel(0)->text(), QStringLiteral("Over Script:"));

        // Keeping the aspect follows the picture's own proportions, both ways.
        dialog.width()->setText(QStringLiteral("50"));
        QCOMPARE(dialog.height()->text(), QStringLiteral("25"));
        dialog.height()->setText(QStringLiteral("30"));
        QCOMPARE(dialog.width()->text(), QStringLiteral("60"));
        dialog.keepAspect()->setChecked(false);
        dialog.width()->setText(QStringLiteral("10"));
        QCOMPARE(dialog.height()->text(), QStringLiteral("30"));

        dialog.setRollOver(ImageDialogValues::RollOver::Image);
        QCOMPARE(dialog.rollOverLabel(0)->text(), QStringLiteral("Over Image:"));
        const ImageDialogValues collected = dialog.values();
        QCOMPARE(collected.Hyperlink, QStringLiteral("mailto:a@b.c"));
        QCOMPARE(collected.Width, QStringLiteral("10"));
        QCOMPARE(collected.MouseOverOption, ImageDialogValues::RollOver::Image);
        QCOMPARE(collected.SourceOut, QStringLiteral("out()"));
        QVERIFY(!collected.Cancel);
    }

    // The movie file goes where images go and is announced like one, from the editor's own
    // method as from a command.
    void movieDialogPlacesTheMovie()
    {
        load(QStringLiteral("<p>text</p>"));
        QVERIFY(writeFile(m_dir->filePath(QStringLiteral("pics/m.swf")), "movie"));
        m_dialogs->movie = [this](FlashPropertiesValues &values) {
            values.MovieURL = m_dir->filePath(QStringLiteral("pics/m.swf"));
        };
        m_editor->FlashMovieDialog();
        const QString folder = m_editor->ImageDirectory();
        QCOMPARE(m_events,
            QStringList({QStringLiteral("ImageInserted m.swf ") + folder,
                QStringLiteral("HTMLChanged"), QStringLiteral("isDirty")}));
        QCOMPARE(VantryTest::readBytes(folder + QStringLiteral("m.swf")), QByteArray("movie"));
        QVERIFY2(
            body().contains(QStringLiteral("value=\"%1m.swf\"").arg(folder)), qPrintable(body()));
    }

    void changeImageTakesAFreeName_data()
    {
        columns<int, QString>("numbered", "newName");

        row("a.png and a_001.png taken", 1, "a_002.png");
        // Every number taken: the last one is overwritten.
        row("all 999 taken", 999, "a_999.png");
    }

    void changeImageTakesAFreeName()
    {
        auto [numbered, newName] = fetch<int, QString>("numbered", "newName");
        const QString folder = m_editor->ImageDirectory();
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(writeFile(folder + QStringLiteral("a.png"), "old"));
        for (int i = 1; i <= numbered; ++i)
            QVERIFY(
                writeFile(folder + Images::IncrementFileName(QStringLiteral("a.png"), i), "old"));
        load(QStringLiteral("<p><img src=\"x.gif\" width=\"5\" style=\"height: 7px\"></p>"));
        QVERIFY(m_surface->selectElement(image()));

        m_editor->ChangeImageFromSelectedElement(
            m_dir->filePath(QStringLiteral("pics")), QStringLiteral("a.png"));
        QCOMPARE(VantryTest::readBytes(folder + newName), QByteArray("new picture"));
        QCOMPARE(m_surface->outerHTML(image()),
            QStringLiteral("<img src=\"%1%2\">").arg(folder, newName));
        QCOMPARE(m_events,
            QStringList({QStringLiteral("ImageInserted %1 %2").arg(newName, folder),
                QStringLiteral("HTMLChanged"), QStringLiteral("isDirty")}));
    }

    void doubleClickFollowsTheTagList_data()
    {
        columns<QString, bool>("tags", "changes");

        row("listed", "table,img", true);
        row("inside a longer word", "imgs", true);
        row("not listed", "td", false);
    }

    void doubleClickFollowsTheTagList()
    {
        auto [tags, changes] = fetch<QString, bool>("tags", "changes");
        m_editor->setChangeImageOnDblClick(true);
        m_editor->setChangeImageOnDblClickTags(tags);
        load(QStringLiteral("<p><img src=\"x.gif\"></p>"));
        QVERIFY(m_surface->selectElement(image()));
        if (changes)
            m_prompts->fileNames.enqueue(m_dir->filePath(QStringLiteral("pics/a.png")));
        Q_EMIT m_surface->doubleClicked();
        if (changes) {
            QTRY_COMPARE(m_surface->attribute(image(), QStringLiteral("src")),
                m_editor->ImageDirectory() + QStringLiteral("a.png"));
            QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::OpenFile),
                QStringList{QStringLiteral("Pick Image")});
        } else {
            QTest::qWait(50);
            QVERIFY(m_prompts->shown.isEmpty());
            QCOMPARE(m_surface->attribute(image(), QStringLiteral("src")), QStringLiteral("x.gif"));
        }
    }

    void copyAndRewriteAllImages()
    {
        const QString picture = m_dir->filePath(QStringLiteral("pics/a.png"));
        load(QStringLiteral("<p><img src=\"file://%1\"><img src=\"%2\"></p>")
                 .arg(picture, m_dir->filePath(QStringLiteral("pics/none.png"))));
        const QString to = m_dir->filePath(QStringLiteral("out")) + QLatin1Char('/');
        m_editor->CopyImageFiles(to);
        QCOMPARE(VantryTest::readBytes(to + QStringLiteral("a.png")), QByteArray("new picture"));
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Critical).size(), 1);

        m_editor->ChangeImagePath(QStringLiteral("/site/img/"));
        QVERIFY2(body().contains(QStringLiteral(
                     "<p><img src=\"/site/img/a.png\"><img src=\"/site/img/none.png\"></p>")),
            qPrintable(body()));
        QVERIFY(m_events.isEmpty());

        load(QStringLiteral(
            "<table background=\"b.gif\"><tbody><tr><td>c</td></tr></tbody></table>"));
        QVERIFY(
            m_surface->selectElement(m_surface->elementsByTagName(QStringLiteral("td")).first()));
        m_editor->RemoveImageFromSelectedElement();
        QVERIFY2(!body().contains(QLatin1String("background")), qPrintable(body()));
    }

    void handlesResizeTheSelection_data()
    {
        columns<QString, Qt::KeyboardModifiers, QPoint, QSize>("tag", "modifiers", "move", "size");

        row("image, free", "img", Qt::KeyboardModifiers(), QPoint(20, 30), QSize(120, 80));
        row("image, shift keeps the aspect", "img", Qt::KeyboardModifiers(Qt::ShiftModifier),
            QPoint(40, 10), QSize(140, 70));
        row("table", "table", Qt::KeyboardModifiers(), QPoint(30, 20), QSize(130, 70));
    }

    void handlesResizeTheSelection()
    {
        auto [tag, modifiers, move, size] = fetch<QString, Qt::KeyboardModifiers, QPoint, QSize>(
            "tag", "modifiers", "move", "size");
        load(QStringLiteral("<p>text</p><img src=\"x.gif\" style=\"display: block; width: 100px; "
                            "height: 50px\"><table style=\"margin: 0; width: 100px; height: 50px\" "
                            "cellspacing=\"0\"><tbody><tr><td>c</td></tr></tbody></table>"));
        const QString loaded = body();
        const Platform::Element element = m_surface->elementsByTagName(tag).first();
        QVERIFY(m_surface->selectElement(element));
        const QVariant ticket = VantryTest::adapterValue(*m_editor, QStringLiteral("frameTicket"));
        QTRY_VERIFY(VantryTest::adapterValue(*m_editor, QStringLiteral("frameRendered"), {ticket})
                        .toBool());
        const QVariantList handles
            = VantryTest::adapterValue(*m_editor, QStringLiteral("resizeHandles")).toList();
        QCOMPARE(handles.size(), 8);
        const QVariantList corner = handles.at(4).toList();
        const QPoint grip(corner.at(0).toInt(), corner.at(1).toInt());

        QWidget *view = m_surface->widget();
        QWidget *input = view->focusProxy() ? view->focusProxy() : view;
        QTest::mousePress(input, Qt::LeftButton, modifiers, grip);
        QTest::mouseMove(input, grip + move / 2);
        QTest::mouseMove(input, grip + move);
        QTest::mouseRelease(input, Qt::LeftButton, modifiers, grip + move);
        QTRY_COMPARE(
            m_surface->attribute(element, QStringLiteral("width")), QString::number(size.width()));
        QCOMPARE(m_surface->attribute(element, QStringLiteral("height")),
            QString::number(size.height()));
        QVERIFY2(
            !m_editor->GetHtmlSource().contains(QLatin1String("vantry-handles")), "handles saved");
        QTRY_COMPARE(m_surface->commandStatus(Undo), 3);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(body(), loaded);
    }

    void uploadedImageGoesIntoTheDocument_data()
    {
        QTest::addColumn<bool>("insert"); // the image-insert command, else UploadImage
        QTest::addColumn<bool>("chosen"); // the form is left with OK, else cancelled
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("message"); // empty: the upload works
        QTest::addColumn<bool>("sftp");

        row("UploadImage", false, true, "editor-pass", "", false);
        row("inserted and uploaded", true, true, "editor-pass", "", false);
        row("inserted and uploaded over SFTP", true, true, "editor-pass", "", true);
        row("UploadImage, login refused", false, true, "wrong", "refused the user name or password",
            false);
        row("inserted, login refused", true, true, "wrong",
            "not inserted. The server refused the user name", false);
        row("inserted, upload cancelled", true, false, "editor-pass",
            "not inserted: the upload was cancelled", false);
    }

    void uploadedImageGoesIntoTheDocument()
    {
        auto [insert, chosen, password, message, sftp] = fetch<bool, bool, QString, QString, bool>(
            "insert", "chosen", "password", "message", "sftp");
        std::unique_ptr<VantryTest::FtpServer> &server = sftp ? m_sftp : m_ftp;
        if (!server)
            server = std::make_unique<VantryTest::FtpServer>(
                sftp ? VantryTest::FtpServer::Sftp : VantryTest::FtpServer::Ftp);
        server->clear();
        QVERIFY(QDir(server->root()).mkpath(QStringLiteral("www")));
        // The editor looks the SFTP server's host key up in the user's known_hosts.
        QTemporaryDir home;
        const QByteArray userHome = qgetenv("HOME");
        const auto restoreHome = qScopeGuard([&userHome] { qputenv("HOME", userHome); });
        if (sftp) {
            QVERIFY(QDir(home.path()).mkpath(QStringLiteral(".ssh")));
            QVERIFY(QFile::copy(
                server->certificate(), home.filePath(QStringLiteral(".ssh/known_hosts"))));
            qputenv("HOME", home.path().toLocal8Bit());
        }
        m_editor->setFTP_ServerName(
            server->address(sftp ? QStringLiteral("sftp") : QStringLiteral("ftp")));
        m_editor->setFTP_UserName(QStringLiteral("editor"));
        m_editor->setFTP_Password(password);
        m_editor->setFTP_RistrictedDirectory(QStringLiteral("/www"));
        m_editor->setImageVCDirectory(QStringLiteral("http://www.example.com/pictures/"));
        m_editor->setUploadImagesWhenInserted(insert);
        const QString picture = m_dir->filePath(QStringLiteral("pics/a.png"));
        m_dialogs->uploadChosen = chosen;
        m_dialogs->chosen = {picture};
        load(QStringLiteral("<p>text</p>"));
        const QString loaded = body();

        if (insert) {
            m_prompts->fileNames.enqueue(picture);
            QString empty;
            m_editor->InsertImageNoPrompt(
                empty, empty, empty, empty, empty, empty, empty, empty, empty);
        } else {
            m_editor->UploadImage();
        }
        m_editor->setUploadImagesWhenInserted(false);
        if (message.isEmpty()) {
            QTRY_COMPARE_WITH_TIMEOUT(m_events,
                QStringList({QStringLiteral("ImageInserted a.png /www/"),
                    QStringLiteral("HTMLChanged"), QStringLiteral("isDirty")}),
                20000);
            QVERIFY2(
                body().contains(QStringLiteral("src=\"http://www.example.com/pictures/a.png\"")),
                qPrintable(body()));
            QCOMPARE(server->files(), QStringList{QStringLiteral("/www/a.png")});
            QVERIFY(!QFileInfo::exists(m_editor->ImageDirectory()));
            QCOMPARE(m_prompts->shown.size(), insert ? 1 : 0); // the picker
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(m_prompts->shown.size() > int(insert), 20000);
        const QString said = m_prompts->shown.last().text;
        QVERIFY2(said.contains(message), qPrintable(said));
        QVERIFY(!said.contains(password));
        QCOMPARE(body(), loaded);
        QVERIFY(m_events.isEmpty());
        QCOMPARE(server->files(), QStringList());
    }

private:
    void load(const QString &html)
    {
        m_editor->setSetHtmlSource(html);
        m_editor->setisDirty(false);
        m_events.clear();
    }

    QString body() { return m_surface->bodyInnerHTML(); }
    Platform::Element image()
    {
        return m_surface->elementsByTagName(QStringLiteral("img")).value(0);
    }
    // What the editor raised, in order: ImageInserted with its arguments, HTMLChanged, isDirty.
    QStringList m_events;

    std::unique_ptr<HTMLEditorComponent> m_editor;
    Platform::WebEngineDesignSurface *m_surface = nullptr;
    RecordingPrompts *m_prompts = nullptr;
    ImageAnswers *m_dialogs = nullptr;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<VantryTest::FtpServer> m_ftp;
    std::unique_ptr<VantryTest::FtpServer> m_sftp;
};

QTEST_MAIN(tst_Images)
#include "tst_images.moc"
