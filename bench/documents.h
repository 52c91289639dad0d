#pragma once

#include <QString>
#include <QStringList>

namespace VantryBench {

// The fixed benchmark documents. The folder comes from the command line (--docs DIR),
// else from VANTRY_BENCH_DOCS, else from where the build expects the shared folder.
class BenchDocuments
{
public:
    explicit BenchDocuments(const QString &commandLineFolder);

    QString folder() const { return m_folder; }
    // The files a workload needs that are not there; empty when all are.
    QStringList missing(const QStringList &names) const;
    // The whole file as UTF-8 text; empty when it cannot be read.
    QString read(const QString &name) const;

private:
    QString m_folder;
};

// A generated document of plain paragraphs, each of about charsPerParagraph characters of
// words, the same text on every run.
QString paragraphDocument(int paragraphs, int charsPerParagraph = 200);

} // namespace VantryBench
