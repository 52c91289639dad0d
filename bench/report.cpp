#include "report.h"

#include <QTextStream>

#include <cmath>

namespace VantryBench {

bool ResultRow::passes() const
{
    if (failed || std::isnan(ours))
        return false;
    switch (target) {
    case Target::Ratio:
        return baseline > 0 && ratio() <= limit;
    case Target::OursMedianBelow:
        return ours < limit;
    case Target::None:
        return true;
    }
    return false;
}

QString ResultRow::targetText() const
{
    switch (target) {
    case Target::Ratio:
        return QStringLiteral("ratio <= %1").arg(limit, 0, 'f', 1);
    case Target::OursMedianBelow:
        return QStringLiteral("median < %1 ms").arg(limit, 0, 'f', 0);
    case Target::None:
        return QStringLiteral("-");
    }
    return {};
}

void Report::skip(const QString &workload, const QString &reason)
{
    m_skipped.append({workload, reason});
}

namespace {

QString number(double ms)
{
    if (std::isnan(ms))
        return QStringLiteral("n/a");
    return QString::number(ms, 'f', ms < 10 ? 2 : 1);
}

} // namespace

void Report::print() const
{
    const QStringList header{QStringLiteral("workload"), QStringLiteral("ours median ms"),
        QStringLiteral("baseline median ms"), QStringLiteral("ratio"), QStringLiteral("target"),
        QStringLiteral("result")};
    QList<QStringList> lines;
    for (const ResultRow &row : m_rows) {
        const QString verdict = row.failed
            ? QStringLiteral("FAIL (did not run)")
            : (row.passes() ? QStringLiteral("PASS") : QStringLiteral("FAIL"));
        lines.append({row.workload, number(row.ours), number(row.baseline),
            row.baseline > 0 ? QString::number(row.ratio(), 'f', 2) : QStringLiteral("-"),
            row.targetText(), verdict});
    }
    QList<qsizetype> widths;
    for (const QString &cell : header)
        widths.append(cell.size());
    for (const QStringList &line : lines) {
        for (qsizetype i = 0; i < line.size(); ++i)
            widths[i] = qMax(widths[i], line.at(i).size());
    }
    auto format = [&widths](const QStringList &cells) {
        QString text;
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (i)
                text += QStringLiteral(" | ");
            // Names left, figures right.
            text += i == 0 || i >= 4 ? cells.at(i).leftJustified(widths.at(i))
                                     : cells.at(i).rightJustified(widths.at(i));
        }
        return text;
    };

    say(QString());
    say(QStringLiteral("Results (medians; ratio = ours / baseline)"));
    say(format(header));
    QStringList rule;
    for (qsizetype w : widths)
        rule.append(QString(w, QLatin1Char('-')));
    say(format(rule));
    for (const QStringList &line : lines)
        say(format(line));
    for (const ResultRow &row : m_rows) {
        if (!row.note.isEmpty())
            say(QStringLiteral("  %1: %2").arg(row.workload, row.note));
    }
    for (const auto &[workload, reason] : m_skipped)
        say(QStringLiteral("SKIPPED %1: %2").arg(workload, reason));
}

void say(const QString &line)
{
    QTextStream out(stdout);
    out << line << Qt::endl;
}

} // namespace VantryBench
