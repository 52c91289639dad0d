#pragma once

#include <QString>
#include <QVariant>

#include <chrono>
#include <memory>

class QWebEnginePage;
class QWebEngineView;
class QWidget;

namespace Vantry {
class HTMLEditorComponent;
namespace Platform {
class WebEngineDesignSurface;
}
} // namespace Vantry

namespace VantryBench {

// One side of a comparison: the editor, or the bare engine it is measured against. Both
// are top-level windows of the same size, so that the engine renders the same area.
// Every operation is synchronous to the caller.
class Subject
{
public:
    static constexpr int width = 1000;
    static constexpr int height = 700;

    virtual ~Subject();

    virtual QString name() const = 0;
    virtual QWidget *window() const = 0;
    virtual QWidget *view() const = 0;
    // The widget the engine takes key events from.
    QWidget *input() const;
    virtual QWebEnginePage *page() const = 0;
    // The world this side's own script runs in; probes go there too.
    virtual quint32 world() const = 0;
    virtual bool isReady() const = 0;

    // Replaces the document; returns once the text is parsed.
    virtual bool load(const QString &html) = 0;
    virtual QString fetch(bool wholeDocument) = 0;
    virtual bool placeCaret(const QString &tag, int index, int offset) = 0;
    // The text of the index-th element of that tag name; null when there is none.
    virtual QString elementText(const QString &tag, int index) = 0;

    // Waits for the engine to run the next rendering update (style, layout and paint).
    bool waitForFrame(std::chrono::milliseconds timeout = std::chrono::seconds(30));

    // Runs a script in world() and returns its value.
    QVariant evaluate(const QString &script,
        std::chrono::milliseconds timeout = std::chrono::seconds(30), bool *ok = nullptr) const;

    // Makes the window active and the document the focus of key input.
    bool focusInput();

protected:
    virtual int frameTicket() = 0;
    virtual bool frameRendered(int ticket) = 0;
};

// The editor as a host uses it.
class EditorSubject : public Subject
{
public:
    EditorSubject();
    ~EditorSubject() override;

    QString name() const override { return QStringLiteral("ours"); }
    QWidget *window() const override;
    QWidget *view() const override;
    QWebEnginePage *page() const override;
    quint32 world() const override;
    bool isReady() const override;
    bool load(const QString &html) override;
    QString fetch(bool wholeDocument) override;
    bool placeCaret(const QString &tag, int index, int offset) override;
    QString elementText(const QString &tag, int index) override;

    Vantry::HTMLEditorComponent *editor() const { return m_editor.get(); }
    // What fetch() reads, straight from the adapter: no text rules applied.
    QString adapterFetch(bool wholeDocument) const;

protected:
    int frameTicket() override;
    bool frameRendered(int ticket) override;

private:
    QVariant call(const QString &operation, const QVariantList &arguments = {}) const;

    std::unique_ptr<Vantry::HTMLEditorComponent> m_editor;
    Vantry::Platform::WebEngineDesignSurface *m_surface = nullptr;
};

// A bare QWebEngineView on a plain contenteditable page, driven by main-world JavaScript.
class RawSubject : public Subject
{
public:
    RawSubject();
    ~RawSubject() override;

    QString name() const override { return QStringLiteral("baseline"); }
    QWidget *window() const override;
    QWidget *view() const override;
    QWebEnginePage *page() const override;
    quint32 world() const override;
    bool isReady() const override { return m_loaded; }
    bool load(const QString &html) override;
    QString fetch(bool wholeDocument) override;
    bool placeCaret(const QString &tag, int index, int offset) override;
    QString elementText(const QString &tag, int index) override;

protected:
    int frameTicket() override;
    bool frameRendered(int ticket) override;

private:
    std::unique_ptr<QWebEngineView> m_view;
    bool m_loaded = false;
};

} // namespace VantryBench
