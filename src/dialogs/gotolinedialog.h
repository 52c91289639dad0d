#pragma once

#include <QDialog>

class QLabel;
class QSpinBox;

namespace Vantry::Platform {
class SourceEditor;
} // namespace Vantry::Platform

namespace Vantry::Dialogs {

using Platform::SourceEditor;

// Asks for a line number and moves the source editor's caret there when accepted.
class GoToLineDialog : public QDialog
{
    Q_OBJECT

public:
    explicit GoToLineDialog(SourceEditor *editor);

    // Offers the lines 1 to lineCount, starting at current.
    void prepare(int lineCount, int current);
    void setLine(int line);
    int line() const;

    void accept() override;

private:
    SourceEditor *m_editor;
    QLabel *m_label = nullptr;
    QSpinBox *m_line = nullptr;
};

} // namespace Vantry::Dialogs
