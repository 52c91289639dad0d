#pragma once

#include <QString>

namespace VantryBench {

class BenchDocuments;
class Report;

// Peak memory of the renderer with article-5mb.html loaded, edited and fetched, and the
// growth of the editor's own process over repeated load-fetch cycles of a 1 MB page. Each
// side runs in a process of its own (this program again, with --child), so that every
// figure covers one renderer's whole life and one process's own heap.
void memoryWorkloads(Report &report, const BenchDocuments &docs, int runs, double peakLimitMB);

// The names of the child runs and the child side of them; prints one RESULT line.
bool isMemoryChild(const QString &mode);
int runMemoryChild(const QString &mode, const BenchDocuments &docs);

} // namespace VantryBench
