#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

class QComboBox;
class QWidget;

namespace Vantry::Commands {

class CommandSink;
class CommandStatusSource;

// The font-name and font-size combo boxes, and the host's FontName, FontSize and
// FontColor. Every request applies only when a document is loaded, the design view shows
// and the surface reports the command available; anything else is dropped quietly.
class FontControls : public QObject
{
    Q_OBJECT

public:
    struct Hooks
    {
        std::function<bool()> isDocumentReady;
        std::function<bool()> designViewActive;
        // Gives the focus back to the document after a choice in a box.
        std::function<void()> returnFocus;
    };

    // The combo boxes are created as children of comboParent.
    FontControls(QWidget *comboParent, Hooks hooks, QObject *parent = nullptr);
    ~FontControls() override;

    static const QStringList &faceNames();
    // The seven HTML font sizes, not points.
    static const QStringList &sizeNames();

    void setStatusSource(CommandStatusSource *source);
    void setCommandSink(CommandSink *sink);

    QComboBox *fontCombo() const { return m_fontCombo; }
    QComboBox *fontSizeCombo() const { return m_fontSizeCombo; }

    // Each returns whether the command ran.
    bool applyFontName(const QVariant &name);
    bool applyFontSize(const QVariant &size);
    bool applyFontColor(const QVariant &colour);

    // The user chose a list entry: the value comes from the fixed list, not the display.
    bool fontChosen(int index);
    bool fontSizeChosen(int index);
    // The user pressed Enter: the text as typed, so faces and sizes off the list work.
    bool fontEntered();
    bool fontSizeEntered();

    // What the selection refresh found; an empty text shows nothing.
    void showFontName(const QString &name);
    void showFontSize(const QString &size);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool apply(int commandId, const QVariant &value);
    // Typing goes on in the document, where it was, whether the choice applied or not.
    bool chosen(bool applied) const;

    Hooks m_hooks;
    CommandStatusSource *m_status;
    CommandSink *m_sink;
    QComboBox *m_fontCombo;
    QComboBox *m_fontSizeCombo;
};

} // namespace Vantry::Commands
