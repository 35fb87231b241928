// The plugin as Qt Designer takes it.

#include "TAVIX20/display/tavix_wnd.h"

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <QPluginLoader>

#include <gtest/gtest.h>

#include <memory>

TEST(DesignerPluginTest, MakesWindows) {
    QPluginLoader loader(TAVIX_DESIGNER_PLUGIN);
    auto *plugin = qobject_cast<QDesignerCustomWidgetInterface *>(loader.instance());
    ASSERT_NE(plugin, nullptr) << loader.errorString().toStdString();
    EXPECT_TRUE(plugin->domXml().contains("class=\"" + plugin->name() + '"'));
    QWidget host;
    auto *window = qobject_cast<CTavixWnd *>(plugin->createWidget(&host));
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->CreateImage(8, 8, 8), 1);
}
