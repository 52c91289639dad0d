// A host built against the installed package: it must compile, link and run with only
// the public headers.
#include <VantryHTMLEditor/HTMLEditorComponent.h>
#include <VantryHTMLEditor/PropertyBag.h>

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    Vantry::HTMLEditorComponent editor;
    editor.setDefaultFontName(QStringLiteral("verdana"));
    Vantry::MemoryPropertyBag bag;
    editor.WriteProperties(bag);
    return bag.value(QStringLiteral("DefaultFontName")).toString() == QStringLiteral("verdana") ? 0
                                                                                                : 1;
}
