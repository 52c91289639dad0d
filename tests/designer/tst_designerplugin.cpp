// Loads the built Qt Designer plugin the way Designer does and creates the editor through it.
#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include <QDomDocument>
#include <QPluginLoader>
#include <QTest>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

class tst_DesignerPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pluginCreatesTheEditor()
    {
        QPluginLoader loader(QStringLiteral(VANTRY_DESIGNER_PLUGIN));
        QVERIFY2(loader.load(), qPrintable(loader.errorString()));
        auto *plugin = qobject_cast<QDesignerCustomWidgetInterface *>(loader.instance());
        QVERIFY(plugin);

        // Designer drops a widget whose template does not parse or names another class.
        QDomDocument dom;
        QString error;
        QVERIFY2(dom.setContent(plugin->domXml(), &error), qPrintable(error));
        const QDomElement widget
            = dom.documentElement().firstChildElement(QStringLiteral("widget"));
        QCOMPARE(widget.attribute(QStringLiteral("class")), plugin->name());
        QCOMPARE(plugin->name(),
            QString::fromLatin1(Vantry::HTMLEditorComponent::staticMetaObject.className()));

        QWidget form;
        QWidget *created = plugin->createWidget(&form);
        auto *editor = qobject_cast<Vantry::HTMLEditorComponent *>(created);
        QVERIFY(editor);
        QCOMPARE(editor->parentWidget(), &form);
        // Designer's property editor writes through the meta-object.
        QVERIFY(editor->setProperty("BaseURL", QStringLiteral("file:///srv/site/")));
        QCOMPARE(editor->BaseURL(), QStringLiteral("file:///srv/site/"));
    }
};

QTEST_MAIN(tst_DesignerPlugin)
#include "tst_designerplugin.moc"
