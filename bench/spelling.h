#pragma once

namespace VantryBench {

class BenchDocuments;
class EditorSubject;
class Report;

// Checking every word of the fixed 1 MB article: the editor's spelling check reading the
// document's text through the adapter, splitting it and asking Hunspell about each word,
// against Hunspell called directly on the same words, already split.
void spellingWorkload(Report &report, const BenchDocuments &docs, EditorSubject &ours, int reps);

} // namespace VantryBench
