#include "dialogsbench.h"

#include "benchsupport.h"
#include "documents.h"
#include "report.h"
#include "subjects.h"

#include <VantryHTMLEditor/EditorDialogs.h>
#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>

namespace VantryBench {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

// Waits for the first paint of a dialog, notes when that paint is done and closes the
// dialog as its user would (reject, the Escape key's slot).
class FirstPaint : public QObject
{
public:
    FirstPaint() { qApp->installEventFilter(this); }
    ~FirstPaint() override { qApp->removeEventFilter(this); }

    void arm()
    {
        m_painted.reset();
        m_widgets = 0;
        m_closing = nullptr;
    }
    std::optional<Clock::time_point> painted() const { return m_painted; }
    qsizetype widgets() const { return m_widgets; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *dialog = qobject_cast<QDialog *>(watched);
        if (event->type() != QEvent::Paint || !dialog || m_painted || m_closing)
            return false;
        m_closing = dialog;
        // Queued: it runs once the paint of the whole window has been flushed.
        QTimer::singleShot(0, dialog, [this] {
            m_painted = Clock::now();
            m_widgets = m_closing->findChildren<QWidget *>().size();
            QPointer<QDialog> dialog = std::exchange(m_closing, nullptr);
            dialog->reject();
        });
        return false;
    }

private:
    std::optional<Clock::time_point> m_painted;
    qsizetype m_widgets = 0;
    QPointer<QDialog> m_closing;
};

// A plain dialog of labels and line edits, as many widgets as the one it stands beside.
void bareDialog(QWidget *parent, qsizetype widgets)
{
    QDialog dialog(parent);
    auto *grid = new QGridLayout(&dialog);
    for (qsizetype i = 1; i < widgets; ++i) {
        const int row = int(i / 2);
        if (i % 2)
            grid->addWidget(new QLabel(QStringLiteral("Field %1:").arg(row), &dialog), row, 0);
        else
            grid->addWidget(new QLineEdit(&dialog), row, 1);
    }
    dialog.exec();
}

struct DialogCase
{
    QString label;
    std::function<void(Vantry::EditorDialogs &)> open;
};

Vantry::EditorDialogs::SpellingQuestion spellingQuestion()
{
    Vantry::EditorDialogs::SpellingQuestion q;
    q.word = QStringLiteral("recieve");
    q.sentence = QStringLiteral("We recieve the page.");
    q.wordStart = 3;
    q.suggestions = QStringList{QStringLiteral("receive"), QStringLiteral("relieve")};
    q.dictionary = QStringLiteral("en_US");
    q.dictionaries = QStringList{QStringLiteral("en_US")};
    return q;
}

// One line per dialog: how the editor opens it through its dialogs.
const QList<DialogCase> &dialogCases()
{
    static const QList<DialogCase> cases{
        {QStringLiteral("insert table"),
            [](Vantry::EditorDialogs &d) {
                Vantry::InsertTableValues v;
                d.insertTable(v);
            }},
        {QStringLiteral("table properties"),
            [](Vantry::EditorDialogs &d) {
                Vantry::TablePropertiesValues v;
                d.tableProperties(v);
            }},
        {QStringLiteral("cell properties"),
            [](Vantry::EditorDialogs &d) {
                Vantry::CellPropertiesValues v;
                d.cellProperties(v);
            }},
        {QStringLiteral("image"),
            [](Vantry::EditorDialogs &d) {
                Vantry::ImageDialogValues v;
                d.insertImage(v);
            }},
        {QStringLiteral("spelling"),
            [](Vantry::EditorDialogs &d) {
                d.spellingWord(spellingQuestion());
                d.spellingDone();
            }},
        {QStringLiteral("upload"),
            [](Vantry::EditorDialogs &d) {
                Vantry::ImageUploadValues v;
                v.FTP_ServerName = QStringLiteral("127.0.0.1:1");
                d.imageUpload(v);
            }},
    };
    return cases;
}

// Opens, waits for the first paint and closes; the times to the paint and from it until
// the call returned and the dialog is gone. False when no paint came.
bool openAndClose(FirstPaint &watch, const std::function<void()> &open, double *toPaint,
    double *toClosed, qsizetype *widgets = nullptr)
{
    watch.arm();
    const auto start = Clock::now();
    // A dialog that never paints would never close: the timer ends it instead.
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, &guard, [] {
        if (auto *modal = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
            modal->reject();
    });
    guard.start(10s);
    open();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const auto end = Clock::now();
    if (!watch.painted())
        return false;
    *toPaint = std::chrono::duration<double, std::milli>(*watch.painted() - start).count();
    *toClosed = std::chrono::duration<double, std::milli>(end - *watch.painted()).count();
    if (widgets)
        *widgets = watch.widgets();
    return true;
}

} // namespace

void dialogsWorkload(Report &report, EditorSubject &ours, int reps)
{
    QWidget *editor = ours.editor();
    Vantry::WidgetDialogs dialogs(editor);
    FirstPaint watch;
    for (const DialogCase &c : dialogCases()) {
        say(QStringLiteral("open and close the %1 dialog (%2 runs each)").arg(c.label).arg(reps));
        Samples paint[2], close[2];
        QString error;
        qsizetype widgets = 0;
        double toPaint = 0, toClosed = 0;
        // The first opening of each, not counted, finds its widget set up and shows what a
        // cold start costs.
        double cold = 0;
        if (!openAndClose(
                watch, [&] { c.open(dialogs); }, &cold, &toClosed, &widgets))
            error = QStringLiteral("the dialog never painted");
        auto bare = [editor, &widgets] { bareDialog(editor, widgets); };
        for (int round = 0; round <= reps && error.isEmpty(); ++round) {
            for (int side : {round % 2, 1 - round % 2}) {
                const bool painted = side == 0 ? openAndClose(
                                         watch, [&] { c.open(dialogs); }, &toPaint, &toClosed)
                                               : openAndClose(watch, bare, &toPaint, &toClosed);
                if (!painted)
                    error = QStringLiteral("a dialog never painted");
                else if (round > 0) { // round 0 warms the bare dialog up
                    paint[side].add(toPaint);
                    close[side].add(toClosed);
                }
            }
            idle(20ms);
        }
        ResultRow row{QStringLiteral("%1 dialog: open to first paint").arg(c.label),
            paint[0].median(), paint[1].median(), ResultRow::Target::OursMedianBelow, 100,
            !error.isEmpty(), error};
        row.spread(paint[0], paint[1]);
        if (error.isEmpty())
            row.note = QStringLiteral("baseline: a bare QDialog of %1 labels and line edits (as "
                                      "many widgets, inner parts counted); "
                                      "first opening %2 ms; close: ours %3, baseline %4 ms")
                           .arg(widgets)
                           .arg(cold, 0, 'f', 1)
                           .arg(close[0].median(), 0, 'f', 1)
                           .arg(close[1].median(), 0, 'f', 1);
        report.add(row);
    }
}

namespace {

// The image dialog of a user who picks the same local file every time.
class PickingDialogs : public Vantry::WidgetDialogs
{
public:
    PickingDialogs(QWidget *parent, QString file)
        : WidgetDialogs(parent)
        , m_file(std::move(file))
    { }

    bool insertImage(Vantry::ImageDialogValues &values) override
    {
        values.Source = m_file;
        values.Alt = QStringLiteral("picture");
        return true;
    }

private:
    QString m_file;
};

const QString imageCount = QStringLiteral("document.body.getElementsByTagName('img').length");

} // namespace

void imageInsertWorkload(
    Report &report, const BenchDocuments &docs, EditorSubject &ours, RawSubject &baseline, int reps)
{
    const QString label = QStringLiteral("insert image with copy, 1 MB page");
    const QString file = QStringLiteral("article-1mb.html");
    const QString text = docs.read(file);
    QTemporaryDir dir;
    const QString picture = dir.filePath(QStringLiteral("photo.png"));
    const QString folder = dir.filePath(QStringLiteral("images"));
    const QString rawFolder = dir.filePath(QStringLiteral("raw"));
    QImage image(640, 480, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    }
    if (text.isEmpty() || !image.save(picture) || !QDir().mkpath(folder)
        || !QDir().mkpath(rawFolder)) {
        report.skip(label, QStringLiteral("cannot read %1 or write a picture").arg(file));
        return;
    }
    Vantry::HTMLEditorComponent *editor = ours.editor();
    const bool copied = editor->CopyImagesWhenInserted();
    const bool numbered = editor->IncermentExistingFileNames();
    const QString imageFolder = editor->ImageDirectory();
    // Every insert a new file, photo_001.png and on, as the baseline makes one per copy.
    editor->setCopyImagesWhenInserted(true);
    editor->setIncermentExistingFileNames(true);
    editor->setImageDirectory(folder);
    editor->setEditorDialogs(std::make_unique<PickingDialogs>(editor, picture));

    say(QStringLiteral("%1 (%2 runs each)").arg(label).arg(reps));
    Samples samples[2];
    QString error;
    Subject *sides[2] = {&ours, &baseline};
    for (Subject *side : sides) {
        if (!side->load(text) || !side->waitForFrame())
            error = side->name() + QStringLiteral(" failed to load");
    }
    for (int round = 0; round <= reps && error.isEmpty(); ++round) {
        for (Subject *side : sides) {
            const int before = side->evaluate(imageCount).toInt();
            if (!side->placeCaret(QStringLiteral("p"), 250, 0) || !side->waitForFrame()) {
                error = side->name() + QStringLiteral(" could not place the caret");
                break;
            }
            idle(20ms);
            const auto start = Clock::now();
            if (side == &ours) {
                editor->InsertImage();
            } else {
                const QString copy = QStringLiteral("%1/photo-%2.png").arg(rawFolder).arg(round);
                bool ok = QFile::copy(picture, copy);
                const QString markup = QStringLiteral("<img src=\"%1\" alt=\"picture\">").arg(copy);
                side->evaluate(QStringLiteral("document.execCommand('insertHTML', false, %1)")
                                   .arg(jsString(markup)),
                    30s, &ok);
            }
            const double ms = elapsedMs(start);
            if (side->evaluate(imageCount).toInt() != before + 1)
                error = side->name() + QStringLiteral(" did not insert one image");
            else if (round > 0)
                samples[side == &ours ? 0 : 1].add(ms);
        }
    }
    const qsizetype files = QDir(folder).entryList(QDir::Files).size();
    if (error.isEmpty() && files != reps + 1)
        error
            = QStringLiteral("%1 files in the image folder, expected %2").arg(files).arg(reps + 1);
    editor->setEditorDialogs(nullptr);
    editor->setImageDirectory(imageFolder);
    editor->setIncermentExistingFileNames(numbered);
    editor->setCopyImagesWhenInserted(copied);

    ResultRow row{label, samples[0].median(), samples[1].median(), ResultRow::Target::Ratio, 2.0,
        !error.isEmpty(), error};
    row.spread(samples[0], samples[1]);
    if (error.isEmpty())
        row.note = QStringLiteral("a 640 x 480 PNG chosen in the image dialog (answered at once), "
                                  "copied into ImageDirectory and inserted at the caret; "
                                  "baseline: QFile::copy and the engine's insertHTML");
    report.add(row);
}

} // namespace VantryBench
