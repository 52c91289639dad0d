#pragma once

namespace VantryBench {

class BenchDocuments;
class EditorSubject;
class RawSubject;
class Report;

// Each of the editor's dialogs opened over the editor until its first paint, then closed,
// beside a bare QDialog holding as many widgets.
void dialogsWorkload(Report &report, EditorSubject &ours, int reps);

// An image chosen in the image dialog, copied into the image folder and inserted, beside
// QFile::copy and the engine's insertHTML.
void imageInsertWorkload(Report &report, const BenchDocuments &docs, EditorSubject &ours,
    RawSubject &baseline, int reps);

} // namespace VantryBench
