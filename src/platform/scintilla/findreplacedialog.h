#pragma once

#include "platform/scintilla/sourceeditor.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace Vantry::Platform {

// The source editor's modeless find dialog; in replace mode it also offers replacing.
// Its buttons call the editor's search units and report the outcome in the dialog.
class FindReplaceDialog : public QDialog
{
    Q_OBJECT

public:
    explicit FindReplaceDialog(SourceEditor *editor);

    void setReplaceMode(bool replace);
    bool isReplaceMode() const { return m_replaceMode; }
    void setFindText(const QString &text);
    QString statusText() const;

    void findNext();
    void replace();
    void replaceAll();

private:
    SourceEditor::SearchOptions options() const;
    void report(bool found);

    SourceEditor *m_editor;
    bool m_replaceMode = false;
    QLineEdit *m_find = nullptr;
    QLineEdit *m_replace = nullptr;
    QLabel *m_replaceLabel = nullptr;
    QCheckBox *m_matchCase = nullptr;
    QCheckBox *m_wholeWord = nullptr;
    QCheckBox *m_searchUp = nullptr;
    QPushButton *m_replaceButton = nullptr;
    QPushButton *m_replaceAllButton = nullptr;
    QLabel *m_status = nullptr;
};

} // namespace Vantry::Platform
