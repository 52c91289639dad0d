#include "htmleditorplugin.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include <QIcon>

HTMLEditorDesignerPlugin::HTMLEditorDesignerPlugin(QObject *parent)
    : QObject(parent)
{ }

QString HTMLEditorDesignerPlugin::name() const
{
    return QStringLiteral("Vantry::HTMLEditorComponent");
}

QString HTMLEditorDesignerPlugin::group() const
{
    return QStringLiteral("Vantry");
}

QString HTMLEditorDesignerPlugin::toolTip() const
{
    return QStringLiteral("HTML editor");
}

QString HTMLEditorDesignerPlugin::whatsThis() const
{
    return QStringLiteral("A visual HTML editor with design and source views.");
}

QString HTMLEditorDesignerPlugin::includeFile() const
{
    return QStringLiteral("VantryHTMLEditor/HTMLEditorComponent.h");
}

QIcon HTMLEditorDesignerPlugin::icon() const
{
    return QIcon::fromTheme(QStringLiteral("text-html"));
}

bool HTMLEditorDesignerPlugin::isContainer() const
{
    return false;
}

QWidget *HTMLEditorDesignerPlugin::createWidget(QWidget *parent)
{
    return new Vantry::HTMLEditorComponent(parent);
}

bool HTMLEditorDesignerPlugin::isInitialized() const
{
    return m_initialized;
}

void HTMLEditorDesignerPlugin::initialize(QDesignerFormEditorInterface *)
{
    m_initialized = true;
}

QString HTMLEditorDesignerPlugin::domXml() const
{
    // The header is global so that forms compile against the installed package.
    return QStringLiteral(R"(<ui language="c++">
 <widget class="Vantry::HTMLEditorComponent" name="htmlEditor">
  <property name="geometry">
   <rect><x>0</x><y>0</y><width>640</width><height>480</height></rect>
  </property>
 </widget>
 <customwidgets>
  <customwidget>
   <class>Vantry::HTMLEditorComponent</class>
   <extends>QWidget</extends>
   <header location="global">VantryHTMLEditor/HTMLEditorComponent.h</header>
  </customwidget>
 </customwidgets>
</ui>
)");
}
