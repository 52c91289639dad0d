#include "memory.h"

#include "benchsupport.h"
#include "documents.h"
#include "report.h"
#include "subjects.h"
#include "typing.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QProcess>

#include <malloc.h>

#include <memory>

namespace VantryBench {

using namespace std::chrono_literals;

namespace {

const QString peakOurs = QStringLiteral("peak-ours");
const QString peakRaw = QStringLiteral("peak-raw");
const QString leakOurs = QStringLiteral("leak-ours");
const QString leakRaw = QStringLiteral("leak-raw");

constexpr int leakWarmUp = 5;
constexpr int leakCycles = 50;
// What 50 cycles may add before the row fails: a few copies of the page's text (1 MB of
// UTF-8 is 2 MB as a QString), far below what one retained copy per cycle would add.
constexpr double leakToleranceMB = 8;

QByteArray procFile(qint64 pid, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A field of /proc/PID/status in kB; -1 when the process or the field is gone.
qint64 statusKB(qint64 pid, const QByteArray &field)
{
    for (const QByteArray &line : procFile(pid, "status").split('\n')) {
        if (line.startsWith(QByteArray(field + ':')))
            return line.mid(field.size() + 1).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

// The engine's renderers are forked by its zygote, a child of ours, and keep the zygote's
// command line unless they retitle themselves: a renderer is either titled so or a child
// of a zygote. Like the peer bench, the page's renderer is the biggest one.
qint64 pageRenderer()
{
    QHash<qint64, qint64> parents;
    QHash<qint64, QByteArray> commands;
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &entry : entries) {
        bool isPid = false;
        const qint64 pid = entry.toLongLong(&isPid);
        if (!isPid)
            continue;
        // The command name sits in parentheses and may hold spaces; the parent follows it.
        const QByteArray stat = procFile(pid, "stat");
        const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
        parents.insert(pid, fields.value(1).toLongLong());
        // A retitled process has its flags space-separated.
        QByteArray command = procFile(pid, "cmdline");
        command.replace('\0', ' ');
        commands.insert(pid, command);
    }
    const qint64 self = QCoreApplication::applicationPid();
    qint64 best = 0;
    for (auto it = commands.cbegin(); it != commands.cend(); ++it) {
        const qint64 pid = it.key();
        if (!it.value().contains(" --type=renderer")
            && !commands.value(parents.value(pid)).contains(" --type=zygote"))
            continue;
        qint64 up = parents.value(pid);
        for (int depth = 0; up > 1 && up != self && depth < 8; ++depth)
            up = parents.value(up);
        if (up == self && (best == 0 || statusKB(pid, "VmRSS") > statusKB(best, "VmRSS")))
            best = pid;
    }
    return best;
}

// Our own resident size with what the allocator keeps only for reuse given back, so that
// the figure follows live memory rather than the heap's high-water mark.
qint64 ownLiveKB()
{
    idle(500ms);
    malloc_trim(0);
    return statusKB(QCoreApplication::applicationPid(), "VmRSS");
}

std::unique_ptr<Subject> startSide(bool ours)
{
    std::unique_ptr<Subject> side;
    if (ours)
        side = std::make_unique<EditorSubject>();
    else
        side = std::make_unique<RawSubject>();
    if (!spinUntil([&side] { return side->isReady(); }, 60s))
        return {};
    return side;
}

int fail(const QString &why)
{
    say(QStringLiteral("ERROR ") + why);
    return 1;
}

int peakChild(bool ours, const QString &html)
{
    const std::unique_ptr<Subject> side = startSide(ours);
    if (!side)
        return fail(QStringLiteral("the engine did not start"));
    idle(500ms); // as the peer bench lets late set-up settle before it looks
    const qint64 renderer = pageRenderer();
    if (renderer == 0)
        return fail(QStringLiteral("no renderer process found under this one"));
    const qint64 before = statusKB(renderer, "VmRSS");

    if (!side->load(html) || !side->waitForFrame())
        return fail(QStringLiteral("the page did not load"));
    if (side->fetch(false).size() < html.size() / 2)
        return fail(QStringLiteral("the fetched page is short"));
    // A few keys typed into a middle paragraph, then its first word made bold.
    const int paragraph = paragraphCount(*side) / 2;
    TypingSession typing(*side, paragraph);
    if (!typing.typeBlock(5) || !typing.verify())
        return fail(typing.error());
    side->placeCaret(QStringLiteral("p"), paragraph, 0);
    side->evaluate(QStringLiteral("document.getSelection().modify('extend', 'forward', 'word')"));
    if (auto *editor = dynamic_cast<EditorSubject *>(side.get()))
        editor->editor()->Bold();
    else
        side->evaluate(QStringLiteral("document.execCommand('bold')"));
    side->waitForFrame();
    if (side->fetch(false).size() < html.size() / 2)
        return fail(QStringLiteral("the edited page came back short"));

    say(QStringLiteral("RESULT %1 %2 %3")
            .arg(statusKB(renderer, "VmHWM"))
            .arg(before)
            .arg(statusKB(renderer, "VmRSS")));
    return 0;
}

int leakChild(bool ours, const QString &html)
{
    const std::unique_ptr<Subject> side = startSide(ours);
    if (!side)
        return fail(QStringLiteral("the engine did not start"));
    const QString small = QStringLiteral("<p>.</p>");
    auto cycle = [&] {
        return side->load(html) && side->fetch(false).size() >= html.size() / 2
            && side->load(small);
    };
    for (int i = 0; i < leakWarmUp; ++i) {
        if (!cycle())
            return fail(QStringLiteral("a warm-up cycle failed"));
    }
    const qint64 warm = ownLiveKB();
    qint64 half = 0;
    for (int i = 1; i <= leakCycles; ++i) {
        if (!cycle())
            return fail(QStringLiteral("cycle %1 failed").arg(i));
        if (i == leakCycles / 2)
            half = ownLiveKB();
    }
    say(QStringLiteral("RESULT %1 %2 %3").arg(warm).arg(half).arg(ownLiveKB()));
    return 0;
}

// Runs this program as a child in the given mode; its RESULT figures, empty on failure.
QList<qint64> runChild(const QString &mode, const BenchDocuments &docs, QString *error)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(),
        {QStringLiteral("--child"), mode, QStringLiteral("--docs"), docs.folder()});
    if (!child.waitForFinished(600000)) {
        child.kill();
        child.waitForFinished();
        *error = mode + QStringLiteral(": did not finish");
        return {};
    }
    const QList<QByteArray> lines = child.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("ERROR "))
            *error = mode + QStringLiteral(": ") + QString::fromUtf8(line.mid(6));
        if (!line.startsWith("RESULT "))
            continue;
        QList<qint64> values;
        for (const QByteArray &field : line.mid(7).split(' '))
            values.append(field.toLongLong());
        return values;
    }
    if (error->isEmpty())
        *error = mode + QStringLiteral(": exit code %1, no result").arg(child.exitCode());
    return {};
}

double mb(qint64 kb)
{
    return double(kb) / 1024.0;
}

void peakRow(Report &report, const BenchDocuments &docs, int runs, double limitMB)
{
    say(QStringLiteral("renderer peak RSS, article-5mb.html (%1 processes each)").arg(runs));
    Samples peak[2], before[2];
    QString error;
    for (int run = 0; run < runs && error.isEmpty(); ++run) {
        // Alternating, as the peer bench alternates its editors.
        for (int k = 0; k < 2 && error.isEmpty(); ++k) {
            const int side = (run + k) % 2;
            const QList<qint64> v = runChild(side == 0 ? peakOurs : peakRaw, docs, &error);
            if (v.size() >= 2) {
                peak[side].add(mb(v.at(0)));
                before[side].add(mb(v.at(1)));
            }
        }
    }
    ResultRow row{QStringLiteral("renderer peak RSS, 5 MB loaded, edited, fetched"),
        peak[0].median(), peak[1].median(), ResultRow::Target::OursMedianBelow, limitMB,
        !error.isEmpty(), error};
    row.unit = QStringLiteral("MB");
    row.spread(peak[0], peak[1]);
    if (error.isEmpty())
        row.note = QStringLiteral("VmHWM of the page's renderer over its whole life, a fresh "
                                  "process per run; RSS before the load: ours %1, baseline %2 MB. "
                                  "Target: TinyMCE's peak in the peer bench (--peer-rss)")
                       .arg(before[0].median(), 0, 'f', 0)
                       .arg(before[1].median(), 0, 'f', 0);
    report.add(row);
}

void leakRow(Report &report, const BenchDocuments &docs)
{
    say(QStringLiteral("process RSS over %1 load-fetch cycles of article-1mb.html")
            .arg(leakCycles));
    QString error;
    const QList<qint64> ours = runChild(leakOurs, docs, &error);
    const QList<qint64> raw = runChild(leakRaw, docs, &error);
    const bool ran = ours.size() >= 3 && raw.size() >= 3;
    Samples growth[2];
    if (ran) {
        growth[0].add(mb(ours.at(2) - ours.at(0)));
        growth[1].add(mb(raw.at(2) - raw.at(0)));
    }
    ResultRow row{
        QStringLiteral("own process RSS growth, %1 load-fetch cycles of 1 MB").arg(leakCycles),
        growth[0].median(), growth[1].median(), ResultRow::Target::OursMedianBelow, leakToleranceMB,
        !ran, error};
    row.unit = QStringLiteral("MB");
    if (ran)
        row.note = QStringLiteral("live RSS (after malloc_trim) after %1 warm-up cycles, after "
                                  "%2 and after %3 more: ours %4 / %5 / %6 MB, baseline %7 / %8 "
                                  "/ %9 MB; one process per side")
                       .arg(leakWarmUp)
                       .arg(leakCycles / 2)
                       .arg(leakCycles)
                       .arg(mb(ours.at(0)), 0, 'f', 1)
                       .arg(mb(ours.at(1)), 0, 'f', 1)
                       .arg(mb(ours.at(2)), 0, 'f', 1)
                       .arg(mb(raw.at(0)), 0, 'f', 1)
                       .arg(mb(raw.at(1)), 0, 'f', 1)
                       .arg(mb(raw.at(2)), 0, 'f', 1);
    report.add(row);
}

} // namespace

void memoryWorkloads(Report &report, const BenchDocuments &docs, int runs, double peakLimitMB)
{
    const QStringList needed{
        QStringLiteral("article-5mb.html"), QStringLiteral("article-1mb.html")};
    const QStringList missing = docs.missing(needed);
    if (!missing.isEmpty()) {
        report.skip(QStringLiteral("memory"),
            QStringLiteral("%1 not found in %2")
                .arg(missing.join(QStringLiteral(", ")), docs.folder()));
        return;
    }
    peakRow(report, docs, runs, peakLimitMB);
    leakRow(report, docs);
}

bool isMemoryChild(const QString &mode)
{
    return QStringList{peakOurs, peakRaw, leakOurs, leakRaw}.contains(mode);
}

int runMemoryChild(const QString &mode, const BenchDocuments &docs)
{
    const bool ours = mode == peakOurs || mode == leakOurs;
    if (mode == peakOurs || mode == peakRaw)
        return peakChild(ours, docs.read(QStringLiteral("article-5mb.html")));
    return leakChild(ours, docs.read(QStringLiteral("article-1mb.html")));
}

} // namespace VantryBench
