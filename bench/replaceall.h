#pragma once

namespace VantryBench {

class BenchDocuments;
class EditorSubject;
class RawSubject;
class Report;

// Replace-all of every "lorem" by "ipsum" (10,000 hits) in the fixed 1 MB document:
// the editor's ReplaceAllText against main-world JavaScript that walks the text nodes
// with a TreeWalker and replaces in each.
void replaceAllWorkload(Report &report, const BenchDocuments &docs, EditorSubject &ours,
    RawSubject &baseline, int reps);

} // namespace VantryBench
