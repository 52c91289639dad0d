#include "report.h"

#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace VantryBench {

double Samples::percentile(double p) const
{
    if (m_values.isEmpty())
        return std::numeric_limits<double>::quiet_NaN();
    QList<double> sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    const auto rank = static_cast<qsizetype>(std::ceil(p / 100.0 * double(sorted.size())));
    return sorted.at(std::clamp<qsizetype>(rank - 1, 0, sorted.size() - 1));
}

double Samples::median() const
{
    if (m_values.isEmpty())
        return std::numeric_limits<double>::quiet_NaN();
    QList<double> sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    const qsizetype mid = sorted.size() / 2;
    return sorted.size() % 2 ? sorted.at(mid) : (sorted.at(mid - 1) + sorted.at(mid)) / 2.0;
}

double Samples::min() const
{
    return m_values.isEmpty() ? std::numeric_limits<double>::quiet_NaN()
                              : *std::min_element(m_values.begin(), m_values.end());
}

double Samples::max() const
{
    return m_values.isEmpty() ? std::numeric_limits<double>::quiet_NaN()
                              : *std::max_element(m_values.begin(), m_values.end());
}

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
        return QStringLiteral("median < %1 %2").arg(limit, 0, 'f', 0).arg(unit);
    case Target::None:
        return QStringLiteral("-");
    }
    return {};
}

void ResultRow::spread(const Samples &oursSamples, const Samples &baselineSamples)
{
    oursP95 = oursSamples.percentile(95);
    baselineP95 = baselineSamples.percentile(95);
}

void Report::skip(const QString &workload, const QString &reason)
{
    m_skipped.append({workload, reason});
}

namespace {

QString number(double value)
{
    if (std::isnan(value))
        return QStringLiteral("-");
    return QString::number(value, 'f', std::abs(value) < 10 ? 2 : 1);
}

} // namespace

void Report::print() const
{
    const QStringList header{QStringLiteral("workload"), QStringLiteral("unit"),
        QStringLiteral("ours median"), QStringLiteral("ours p95"),
        QStringLiteral("baseline median"), QStringLiteral("baseline p95"), QStringLiteral("ratio"),
        QStringLiteral("target"), QStringLiteral("result")};
    const qsizetype firstText = header.indexOf(QStringLiteral("target"));
    QList<QStringList> lines;
    for (const ResultRow &row : m_rows) {
        const QString verdict = row.failed
            ? QStringLiteral("FAIL (did not run)")
            : (row.passes() ? QStringLiteral("PASS") : QStringLiteral("FAIL"));
        lines.append({row.workload, row.unit, number(row.ours), number(row.oursP95),
            number(row.baseline), number(row.baselineP95),
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
    auto format = [&widths, firstText](const QStringList &cells) {
        QString text;
        for (qsizetype i = 0; i < cells.size(); ++i) {
            if (i)
                text += QStringLiteral(" | ");
            // Names left, figures right.
            text += i <= 1 || i >= firstText ? cells.at(i).leftJustified(widths.at(i))
                                             : cells.at(i).rightJustified(widths.at(i));
        }
        return text;
    };

    say(QString());
    say(QStringLiteral("Results (median and 95th percentile of the runs; ratio = ours / baseline, "
                       "medians)"));
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
