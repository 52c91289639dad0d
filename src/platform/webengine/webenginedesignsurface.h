#pragma once

#include "platform/designsurface.h"
#include "platform/webengine/scriptbridge.h"

#include <QVariantList>

class QWebChannel;
class QWebEngineView;
class QWebEnginePage;

namespace Vantry::Platform {

class SurfaceNotifier;

// The design surface on QtWebEngine: a view whose page has the main world's JavaScript
// switched off, with the editing adapter in an isolated world.
class WebEngineDesignSurface : public DesignSurface
{
    Q_OBJECT

public:
    explicit WebEngineDesignSurface(QWidget *parent);
    ~WebEngineDesignSurface() override;

    QWidget *widget() const override;
    bool isReady() const override { return m_ready; }

    bool setDocumentHTML(const QString &html) override;
    QString documentHTML() override;
    QString bodyInnerHTML() override;
    QString bodyInnerText() override;
    bool setBodyInnerHTML(const QString &html) override;
    QString title() override;
    bool setTitle(const QString &title) override;
    QList<Element> elementsByName(const QString &name) override;
    QList<Element> elementsByTagName(const QString &tagName) override;
    Element head() override;
    Element body() override;
    Element createElement(const QString &tagName) override;
    bool appendChild(const Element &parent, const Element &child) override;
    QString tagName(const Element &element) override;
    QString attribute(const Element &element, const QString &name) override;
    bool setAttribute(const Element &element, const QString &name, const QString &value) override;
    QString outerHTML(const Element &element) override;
    QRectF boundingRect(const Element &element) override;
    QStringList styleSheetHrefs() override;
    QPoint scrollPosition() override;
    bool setScrollLeft(int left) override;
    bool setScrollTop(int top) override;
    bool setEditable(bool editable) override;
    bool isEditable() override;
    bool setScrollBarsVisible(bool visible) override;
    bool setBaseUrl(const QString &url) override;
    bool refresh() override;
    bool useElementFormatting() override;
    bool focusDocument() override;

    // Direct access to the adapter for operations without a typed wrapper yet (tests and
    // benchmarks use it to inspect the document).
    ScriptBridge::Result call(const QString &operation, const QVariantList &arguments = {},
                              std::chrono::milliseconds timeout = ScriptBridge::defaultTimeout);

    // The world the adapter runs in; the document's own scripts would run in another.
    static quint32 adapterWorld();
    QWebEnginePage *page() const;

private:
    void handleNotification(const QString &kind, const QVariantList &args);
    QVariant callValue(const QString &operation, const QVariantList &arguments = {},
                       std::chrono::milliseconds timeout = ScriptBridge::defaultTimeout);
    bool callBool(const QString &operation, const QVariantList &arguments = {});
    QList<Element> elementList(const QVariant &value) const;

    QWebEngineView *m_view = nullptr;
    QWebChannel *m_channel = nullptr;
    SurfaceNotifier *m_notifier = nullptr;
    std::unique_ptr<ScriptBridge> m_bridge;
    bool m_ready = false;
};

// Receives the adapter's notifications through the web channel.
class SurfaceNotifier : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

public Q_SLOTS:
    void notify(const QString &kind, const QVariantList &args) { Q_EMIT notified(kind, args); }

Q_SIGNALS:
    void notified(const QString &kind, const QVariantList &args);
};

} // namespace Vantry::Platform
