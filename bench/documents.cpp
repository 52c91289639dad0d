#include "documents.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <cstdint>

#ifndef VANTRY_BENCH_DOCS_DIR
#define VANTRY_BENCH_DOCS_DIR ""
#endif

namespace VantryBench {

BenchDocuments::BenchDocuments(const QString &commandLineFolder)
{
    QString folder = commandLineFolder;
    if (folder.isEmpty())
        folder = qEnvironmentVariable("VANTRY_BENCH_DOCS");
    if (folder.isEmpty())
        folder = QString::fromUtf8(VANTRY_BENCH_DOCS_DIR);
    m_folder = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
}

QStringList BenchDocuments::missing(const QStringList &names) const
{
    QStringList absent;
    for (const QString &name : names) {
        if (!QFileInfo(QDir(m_folder).filePath(name)).isReadable())
            absent.append(name);
    }
    return absent;
}

QString BenchDocuments::read(const QString &name) const
{
    QFile file(QDir(m_folder).filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

QString paragraphDocument(int paragraphs, int charsPerParagraph)
{
    static constexpr std::array words{"account", "balance", "channel", "decision", "evidence",
        "finance", "garden", "harbour", "income", "journey", "kitchen", "library", "measure",
        "network", "office", "project", "quarter", "research", "station", "training", "value",
        "window", "year", "zone", "of", "the", "and", "to"};
    // A fixed linear congruential sequence: the same document on every run and machine.
    std::uint32_t state = 12345;
    auto next = [&state] {
        state = state * 1664525u + 1013904223u;
        return state >> 8;
    };

    QString html;
    html.reserve(qsizetype(paragraphs) * (charsPerParagraph + 16));
    QString line;
    for (int p = 0; p < paragraphs; ++p) {
        line.clear();
        while (line.size() < charsPerParagraph) {
            if (!line.isEmpty())
                line.append(QLatin1Char(' '));
            line.append(QLatin1String(words[next() % words.size()]));
        }
        html += QStringLiteral("<p>") + line + QStringLiteral("</p>\n");
    }
    return html;
}

} // namespace VantryBench
