#include "../common/cancellingdialogs.h"
#include "../common/datarows.h"
#include "../common/files.h"
#include "../common/ftpserver.h"
#include "../common/recordingprompts.h"
#include "../common/surfacefixture.h"

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
using namespace Qt::StringLiterals;
using VantryTest::RecordingPrompts;
using VantryTest::writeFile;

namespace {

constexpr int Undo = 5049;

} // namespace

class tst_Images : public VantryTest::SurfaceFixture
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(start());
        connect(m_editor.get(), &HTMLEditorComponent::ImageInserted, this,
            [this](QVariant &name, QVariant &path) {
                m_events << u"ImageInserted "_s + name.toString() + QLatin1Char(' ')
                        + path.toString();
            });
        connect(m_editor.get(), &HTMLEditorComponent::HTMLChanged, this,
            [this] { m_events << u"HTMLChanged"_s; });
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
        auto dialogs = std::make_unique<AnsweringDialogs>();
        m_dialogs = dialogs.get();
        m_editor->setEditorDialogs(std::move(dialogs));
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        QVERIFY(writeFile(m_dir->filePath(u"pics/a.png"_s), "new picture"));
        m_editor->setImageDirectory(m_dir->filePath(u"site/img"_s) + QLatin1Char('/'));
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
        QVERIFY(writeFile(folder + u"a.png"_s, "old picture"));
        m_editor->setCopyImagesWhenInserted(copy);
        m_editor->setIncermentExistingFileNames(increment);
        if (!baseFolder.isEmpty())
            m_editor->setBaseURL(
                QUrl::fromLocalFile(m_dir->filePath(baseFolder)).toString() + u'/');
        load(u"<p>text</p>"_s);
        const QString loaded = body();

        insertPicked(m_dir->filePath(u"pics/a.png"_s));
        const QString expected = baseFolder.isEmpty() ? m_dir->filePath(src) : src;
        QVERIFY2(body().contains(u"src=\"%1\""_s.arg(expected)), qPrintable(body()));
        QVERIFY2(m_surface->attribute(image(), u"width"_s).isEmpty(),
            "a picked picture keeps its own size");
        QStringList events{u"isDirty"_s};
        if (copy) {
            QCOMPARE(VantryTest::readBytes(folder + fileName), QByteArray("new picture"));
            events.prepend(u"HTMLChanged"_s);
            events.prepend(u"ImageInserted %1 %2"_s.arg(fileName, folder));
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
        load(u"<p>text</p>"_s);
        const QString loaded = body();

        const QString path = m_dir->filePath(source);
        if (dialog) {
            m_dialogs->image = [&](ImageDialogValues &values) { values.Source = path; };
            m_editor->InsertImage();
        } else {
            insertPicked(path);
        }
        QCOMPARE(body(), loaded);
        QVERIFY(m_events.isEmpty());
        const QStringList errors = m_prompts->texts(RecordingPrompts::Kind::Critical);
        QCOMPARE(errors.size(), 1);
        QVERIFY2(errors.first().contains(message), qPrintable(errors.first()));
    }

    void imageDialogInsertsAndEdits()
    {
        load(u"<p>text</p>"_s);
        const QString loaded = body();
        const QString picture = m_dir->filePath(u"pics/a.png"_s);
        ImageDialogValues shown;
        m_dialogs->image = [&](ImageDialogValues &values) {
            shown = values;
            values.Source = picture;
            values.Width = u"30"_s;
            values.Hyperlink = u"http://x.org/"_s;
            values.Target = u"_top"_s;
            values.MouseOverOption = ImageDialogValues::RollOver::Image;
            values.SourceOver = u"o.gif"_s;
        };
        m_editor->InsertImage();
        QCOMPARE(shown.Source, QString());
        const QString folder = m_editor->ImageDirectory();
        QCOMPARE(m_events,
            QStringList({u"ImageInserted a.png "_s + folder, u"HTMLChanged"_s, u"isDirty"_s}));
        const QString inserted = body();
        QVERIFY(inserted.contains(u"src=\"%1a.png\""_s.arg(folder)));

        // Editing shows the image and its link as inserted, and replaces both as one step.
        QVERIFY(m_surface->selectElement(image()));
        m_dialogs->image = [&shown](ImageDialogValues &values) {
            shown = values;
            values.Width = u"60"_s;
            values.Hyperlink.clear();
        };
        m_editor->InsertImage();
        QCOMPARE(shown.Width, u"30"_s);
        QCOMPARE(shown.Hyperlink, u"http://x.org/"_s);
        QCOMPARE(shown.Target, u"_top"_s);
        QCOMPARE(shown.SourceOver, u"o.gif"_s);
        QCOMPARE(shown.MouseOverOption, ImageDialogValues::RollOver::Image);
        QVERIFY2(!body().contains(QLatin1String("<a ")), qPrintable(body()));
        QCOMPARE(m_surface->elementsByTagName(u"img"_s).size(), 1);
        QCOMPARE(m_surface->attribute(image(), u"width"_s), u"60"_s);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(body(), inserted);

        // Cancel changes nothing.
        QVERIFY(m_surface->selectElement(image()));
        m_dialogs->image = nullptr;
        m_editor->InsertImage();
        QCOMPARE(body(), inserted);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(body(), loaded);
    }

    void imageDialogFillsAndCollects()
    {
        const QString picture = m_dir->filePath(u"pics/wide.png"_s);
        QImage wide(200, 100, QImage::Format_RGB32);
        wide.fill(Qt::red);
        QVERIFY(wide.save(picture));

        Dialogs::ImageDialog dialog([this]() -> UserPrompts & { return *m_prompts; });
        ImageDialogValues values;
        values.Source = picture;
        values.Hyperlink = u"MAILTO:a@b.c"_s;
        values.MouseOverOption = ImageDialogValues::RollOver::Script;
        values.SourceOut = u"out()"_s;
        dialog.setValues(values);
        QCOMPARE(dialog.pictureSize(), QSize(200, 100));
        QCOMPARE(dialog.rollOverLabel(0)->text(), u"Over Script:"_s);

        // Keeping the aspect follows the picture's own proportions, both ways.
        dialog.width()->setText(u"50"_s);
        QCOMPARE(dialog.height()->text(), u"25"_s);
        dialog.height()->setText(u"30"_s);
        QCOMPARE(dialog.width()->text(), u"60"_s);
        dialog.keepAspect()->setChecked(false);
        dialog.width()->setText(u"10"_s);
        QCOMPARE(dialog.height()->text(), u"30"_s);

        dialog.setRollOver(ImageDialogValues::RollOver::Image);
        QCOMPARE(dialog.rollOverLabel(0)->text(), u"Over Image:"_s);
        const ImageDialogValues collected = dialog.values();
        QCOMPARE(collected.Hyperlink, u"mailto:a@b.c"_s);
        QCOMPARE(collected.Width, u"10"_s);
        QCOMPARE(collected.MouseOverOption, ImageDialogValues::RollOver::Image);
        QCOMPARE(collected.SourceOut, u"out()"_s);
        QVERIFY(!collected.Cancel);
    }

    // The movie file goes where images go and is announced like one, from the editor's own
    // method as from a command.
    void movieDialogPlacesTheMovie()
    {
        load(u"<p>text</p>"_s);
        QVERIFY(writeFile(m_dir->filePath(u"pics/m.swf"_s), "movie"));
        m_dialogs->flash = [this](FlashPropertiesValues &values) {
            values.MovieURL = m_dir->filePath(u"pics/m.swf"_s);
        };
        m_editor->FlashMovieDialog();
        const QString folder = m_editor->ImageDirectory();
        QCOMPARE(m_events,
            QStringList({u"ImageInserted m.swf "_s + folder, u"HTMLChanged"_s, u"isDirty"_s}));
        QCOMPARE(VantryTest::readBytes(folder + u"m.swf"_s), QByteArray("movie"));
        QVERIFY2(body().contains(u"value=\"%1m.swf\""_s.arg(folder)), qPrintable(body()));
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
        QVERIFY(writeFile(folder + u"a.png"_s, "old"));
        for (int i = 1; i <= numbered; ++i)
            QVERIFY(writeFile(folder + Images::IncrementFileName(u"a.png"_s, i), "old"));
        load(u"<p><img src=\"x.gif\" width=\"5\" style=\"height: 7px\"></p>"_s);
        QVERIFY(m_surface->selectElement(image()));

        m_editor->ChangeImageFromSelectedElement(m_dir->filePath(u"pics"_s), u"a.png"_s);
        QCOMPARE(VantryTest::readBytes(folder + newName), QByteArray("new picture"));
        QCOMPARE(m_surface->outerHTML(image()), u"<img src=\"%1%2\">"_s.arg(folder, newName));
        QCOMPARE(m_events,
            QStringList(
                {u"ImageInserted %1 %2"_s.arg(newName, folder), u"HTMLChanged"_s, u"isDirty"_s}));
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
        load(u"<p><img src=\"x.gif\"></p>"_s);
        QVERIFY(m_surface->selectElement(image()));
        if (changes)
            m_prompts->fileNames.enqueue(m_dir->filePath(u"pics/a.png"_s));
        Q_EMIT m_surface->doubleClicked();
        if (changes) {
            QTRY_COMPARE(
                m_surface->attribute(image(), u"src"_s), m_editor->ImageDirectory() + u"a.png"_s);
            QCOMPARE(
                m_prompts->texts(RecordingPrompts::Kind::OpenFile), QStringList{u"Pick Image"_s});
        } else {
            QTest::qWait(50);
            QVERIFY(m_prompts->shown.isEmpty());
            QCOMPARE(m_surface->attribute(image(), u"src"_s), u"x.gif"_s);
        }
    }

    void copyAndRewriteAllImages()
    {
        const QString picture = m_dir->filePath(u"pics/a.png"_s);
        load(u"<p><img src=\"file://%1\"><img src=\"%2\"></p>"_s.arg(
            picture, m_dir->filePath(u"pics/none.png"_s)));
        const QString to = m_dir->filePath(u"out"_s) + QLatin1Char('/');
        m_editor->CopyImageFiles(to);
        QCOMPARE(VantryTest::readBytes(to + u"a.png"_s), QByteArray("new picture"));
        QCOMPARE(m_prompts->texts(RecordingPrompts::Kind::Critical).size(), 1);

        m_editor->ChangeImagePath(u"/site/img/"_s);
        QVERIFY2(body().contains(QStringLiteral(
                     "<p><img src=\"/site/img/a.png\"><img src=\"/site/img/none.png\"></p>")),
            qPrintable(body()));
        QVERIFY(m_events.isEmpty());

        load(QStringLiteral(
            "<table background=\"b.gif\"><tbody><tr><td>c</td></tr></tbody></table>"));
        QVERIFY(m_surface->selectElement(m_surface->elementsByTagName(u"td"_s).first()));
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
        waitForFrame();
        const QVariantList handles = js(u"resizeHandles"_s).toList();
        QCOMPARE(handles.size(), 8);
        const QVariantList corner = handles.at(4).toList();
        const QPoint grip(corner.at(0).toInt(), corner.at(1).toInt());

        QWidget *input = VantryTest::inputOf(*m_surface);
        QTest::mousePress(input, Qt::LeftButton, modifiers, grip);
        QTest::mouseMove(input, grip + move / 2);
        QTest::mouseMove(input, grip + move);
        QTest::mouseRelease(input, Qt::LeftButton, modifiers, grip + move);
        QTRY_COMPARE(m_surface->attribute(element, u"width"_s), QString::number(size.width()));
        QCOMPARE(m_surface->attribute(element, u"height"_s), QString::number(size.height()));
        QVERIFY2(
            !m_editor->GetHtmlSource().contains(QLatin1String("vantry-handles")), "handles saved");
        QTRY_COMPARE(m_surface->commandStatus(Undo), 3);
        QVERIFY(m_surface->execCommand(Undo));
        QCOMPARE(body(), loaded);
    }

    void uploadedImageGoesIntoTheDocument_data()
    {
        QTest::addColumn<bool>("insert"); // the image-insert command, else UploadImage
        // The folder the form chooses below the restricted one, or "cancel".
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("message"); // empty: the upload works
        QTest::addColumn<bool>("sftp");

        row("UploadImage", false, "img", "editor-pass", "", false);
        row("inserted and uploaded", true, "", "editor-pass", "", false);
        row("inserted and uploaded over SFTP", true, "", "editor-pass", "", true);
        row("UploadImage outside the restricted folder", false, "/etc", "editor-pass",
            "may only go to /www", false);
        row("inserted, login refused", true, "", "wrong",
            "not inserted. The server refused the user name", false);
        row("inserted, upload cancelled", true, "cancel", "editor-pass",
            "not inserted: the upload was cancelled", false);
    }

    void uploadedImageGoesIntoTheDocument()
    {
        auto [insert, folder, password, message, sftp]
            = fetch<bool, QString, QString, QString, bool>(
                "insert", "folder", "password", "message", "sftp");
        std::unique_ptr<VantryTest::FtpServer> &server = sftp ? m_sftp : m_ftp;
        if (!server)
            server = std::make_unique<VantryTest::FtpServer>(
                sftp ? VantryTest::FtpServer::Sftp : VantryTest::FtpServer::Ftp);
        server->clear();
        QVERIFY(QDir(server->root()).mkpath(u"www/img"_s));
        // The editor looks the SFTP server's host key up in the user's known_hosts.
        QTemporaryDir home;
        const QByteArray userHome = qgetenv("HOME");
        const auto restoreHome = qScopeGuard([&userHome] { qputenv("HOME", userHome); });
        if (sftp) {
            QVERIFY(QDir(home.path()).mkpath(u".ssh"_s));
            QVERIFY(QFile::copy(server->certificate(), home.filePath(u".ssh/known_hosts"_s)));
            qputenv("HOME", home.path().toLocal8Bit());
        }
        m_editor->setFTP_ServerName(server->address(sftp ? u"sftp"_s : u"ftp"_s));
        m_editor->setFTP_UserName(u"editor"_s);
        m_editor->setFTP_Password(password);
        m_editor->setFTP_RistrictedDirectory(u"/www"_s);
        m_editor->setImageVCDirectory(u"http://www.example.com/pictures/"_s);
        m_editor->setUploadImagesWhenInserted(insert);
        const QString picture = m_dir->filePath(u"pics/a.png"_s);
        // The host's form only chooses: the files it is given, or the picture.
        if (folder != QLatin1String("cancel"))
            m_dialogs->upload = [picture, folder](ImageUploadValues &values) {
                if (values.files.isEmpty())
                    values.files = {picture};
                values.remoteFolder = folder;
            };
        load(u"<p>text</p>"_s);
        const QString loaded = body();

        if (insert)
            insertPicked(picture);
        else
            m_editor->UploadImage();
        m_editor->setUploadImagesWhenInserted(false);
        if (message.isEmpty()) {
            const QString below = folder.isEmpty() ? QString() : folder + u'/';
            QTRY_COMPARE_WITH_TIMEOUT(m_events,
                QStringList(
                    {u"ImageInserted a.png /www/"_s + below, u"HTMLChanged"_s, u"isDirty"_s}),
                20000);
            QVERIFY2(
                body().contains(u"src=\"http://www.example.com/pictures/%1a.png\""_s.arg(below)),
                qPrintable(body()));
            QCOMPARE(server->files(), QStringList{u"/www/"_s + below + u"a.png"_s});
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
    // InsertImageNoPrompt without a source: the picker is answered with path.
    void insertPicked(const QString &path)
    {
        m_prompts->fileNames.enqueue(path);
        QString width = u"40"_s, none;
        m_editor->InsertImageNoPrompt(width, none, none, none, none, none, none, none, none);
    }

    void load(const QString &html)
    {
        m_editor->setSetHtmlSource(html);
        m_editor->setisDirty(false);
        m_events.clear();
    }

    Platform::Element image() { return m_surface->elementsByTagName(u"img"_s).value(0); }
    // What the editor raised, in order: ImageInserted with its arguments, HTMLChanged, isDirty.
    QStringList m_events;

    RecordingPrompts *m_prompts = nullptr;
    AnsweringDialogs *m_dialogs = nullptr;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<VantryTest::FtpServer> m_ftp;
    std::unique_ptr<VantryTest::FtpServer> m_sftp;
};

QTEST_MAIN(tst_Images)
#include "tst_images.moc"
