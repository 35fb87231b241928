#include "tavix_wnd_plugin.h"

#include <TAVIX20/display/tavix_wnd.h>

#include <QPainter>
#include <QPixmap>

QString TavixWndDesignerPlugin::name() const {
    return QString::fromLatin1(CTavixWnd::staticMetaObject.className());
}

QString TavixWndDesignerPlugin::group() const {
    return QStringLiteral("Machine Vision");
}

QString TavixWndDesignerPlugin::toolTip() const {
    return QStringLiteral("Image window with zoom and overlay graphics");
}

QString TavixWndDesignerPlugin::whatsThis() const {
    return toolTip();
}

QString TavixWndDesignerPlugin::includeFile() const {
    return QStringLiteral("TAVIX20/display/tavix_wnd.h");
}

QString TavixWndDesignerPlugin::domXml() const {
    return QStringLiteral(R"(<ui language="c++">
  <widget class="CTavixWnd" name="imageWindow">
    <property name="geometry"><rect><x>0</x><y>0</y><width>320</width><height>240</height></rect></property>
  </widget>
</ui>)");
}

/// A picture with a cross in it.
QIcon TavixWndDesignerPlugin::icon() const {
    QPixmap picture(22, 22);
    picture.fill(Qt::darkGray);
    QPainter painter(&picture);
    painter.setPen(Qt::green);
    painter.drawLine(11, 2, 11, 19);
    painter.drawLine(2, 11, 19, 11);
    return QIcon(picture);
}

QWidget *TavixWndDesignerPlugin::createWidget(QWidget *parent) {
    return new CTavixWnd(parent);
}
