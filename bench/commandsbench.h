#pragma once

namespace VantryBench {

class BenchDocuments;
class EditorSubject;
class RawSubject;
class Report;

// Editing commands: bold toggled on a selected word of the 1 MB document followed by the
// toolbar's status refresh, and a row and a column inserted with the caret in row 500 of
// the 1,000 x 5 table; against the engine's own commands and plain DOM calls in the main
// world.
void commandsWorkload(Report &report, const BenchDocuments &docs, EditorSubject &ours,
    RawSubject &baseline, int reps);

} // namespace VantryBench
