#pragma once

#include <QList>
#include <QString>

#include <limits>

namespace VantryBench {

// Repeated measurements of one thing (milliseconds unless a row says otherwise).
class Samples
{
public:
    void add(double value) { m_values.append(value); }
    qsizetype count() const { return m_values.size(); }
    bool isEmpty() const { return m_values.isEmpty(); }
    double median() const;
    // Nearest-rank percentile; NaN when there is no sample.
    double percentile(double p) const;
    double min() const;
    double max() const;

private:
    QList<double> m_values;
};

// One line of the result table: the editor against the bare engine on the same workload.
struct ResultRow
{
    enum class Target
    {
        Ratio,
        OursMedianBelow,
        None
    };

    QString workload;
    double ours = 0; // median
    double baseline = 0; // median
    Target target = Target::Ratio;
    double limit = 0; // the largest passing ratio, or the bound on our median
    bool failed = false; // the workload could not run to the end
    QString note;
    double oursP95 = std::numeric_limits<double>::quiet_NaN();
    double baselineP95 = std::numeric_limits<double>::quiet_NaN();
    QString unit = QStringLiteral("ms");

    double ratio() const { return baseline > 0 ? ours / baseline : 0; }
    bool passes() const;
    QString targetText() const;
    // Takes the 95th percentiles of the samples the medians came from.
    void spread(const Samples &oursSamples, const Samples &baselineSamples);
};

class Report
{
public:
    void add(const ResultRow &row) { m_rows.append(row); }
    void skip(const QString &workload, const QString &reason);
    void print() const;

private:
    QList<ResultRow> m_rows;
    QList<QPair<QString, QString>> m_skipped;
};

// Prints to standard output and flushes, so that progress shows while the engine works.
void say(const QString &line);

} // namespace VantryBench
