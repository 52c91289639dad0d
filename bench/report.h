#pragma once

#include <QList>
#include <QString>

namespace VantryBench {

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
    double ours = 0; // median, ms
    double baseline = 0; // median, ms
    Target target = Target::Ratio;
    double limit = 0; // the largest passing ratio, or the bound on our median in ms
    bool failed = false; // the workload could not run to the end
    QString note;

    double ratio() const { return baseline > 0 ? ours / baseline : 0; }
    bool passes() const;
    QString targetText() const;
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
