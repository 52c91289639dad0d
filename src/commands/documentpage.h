#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace Vantry::Platform {
class DesignSurface;
struct DocumentReferences;
} // namespace Vantry::Platform

namespace Vantry::Commands {

class SelectionAccess;

// The page properties of an editor's document by their clsDocumentProperties names: the
// BODY around the selection and the document's title. Before a document is loaded, and
// where no BODY is around the selection, reads give "" and writes are dropped.
class DocumentPage : public QObject
{
    Q_OBJECT

public:
    DocumentPage(Platform::DesignSurface &surface, SelectionAccess &selection,
        Platform::DocumentReferences &references, std::function<bool()> isReady);

    QString read(const QString &property) const;
    void write(const QString &property, const QString &value);

private:
    Platform::DesignSurface &m_surface;
    SelectionAccess &m_selection;
    Platform::DocumentReferences &m_references;
    std::function<bool()> m_isReady;
};

} // namespace Vantry::Commands
