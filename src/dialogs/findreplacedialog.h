#pragma once

#include "platform/searchtarget.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace Vantry::Dialogs {

// A modeless find dialog over one view; in replace mode, for a target that can replace,
// it also offers replacing. Its buttons call the target and report the outcome here.
class FindReplaceDialog : public QDialog
{
    Q_OBJECT

public:
    // The target outlives the dialog: it is the parent's, or the parent itself.
    FindReplaceDialog(Platform::SearchTarget &target, QWidget *parent);

    void setReplaceMode(bool replace);
    bool isReplaceMode() const { return m_replaceMode; }
    void setFindText(const QString &text);
    QString statusText() const;

    void findNext();
    void replace();
    void replaceAll();

private:
    Platform::SearchOptions options() const;
    void report(bool found);

    Platform::SearchTarget &m_target;
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

} // namespace Vantry::Dialogs
