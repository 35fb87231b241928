#include "window.h"

#include <QApplication>
#include <QFileInfo>
#include <QPixmap>
#include <QShortcut>

#include <cstdio>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned long BLOB_COLOUR = 0x0000FF00; // Green.
constexpr int SOLID = 0;
constexpr int PEN_WIDTH = 1;

void Fill(CTavixWnd &window, const Options &options, const Inspection &inspection) {
    window.resize(options.width, options.height);
    window.setWindowTitle(
        QString("%1 - %2 blobs")
            .arg(QFileInfo(QString::fromLocal8Bit(options.image.c_str())).fileName())
            .arg(inspection.blobs.GetElementCount()));
    window.SetImage(inspection.picture.get());
    for (int i = 0; i < inspection.blobs.GetElementCount(); ++i) {
        const _stBlobRect &blob = inspection.blobs[i];
        window.AddRectangle(static_cast<int>(blob.left), static_cast<int>(blob.top),
                            static_cast<int>(blob.right - blob.left + 1),
                            static_cast<int>(blob.bottom - blob.top + 1), SOLID, PEN_WIDTH,
                            BLOB_COLOUR, "blob");
    }
}

void AddShortcuts(CTavixWnd &window) {
    const auto add = [&window](const QKeySequence &keys, auto action) {
        QObject::connect(new QShortcut(keys, &window), &QShortcut::activated, &window, action);
    };
    add(Qt::Key_Plus, [&window] { window.ZoomPlus(); });
    add(Qt::Key_Minus, [&window] { window.ZoomMinus(); });
    add(Qt::Key_F, [&window] { window.ZoomFitTo(); });
    add(Qt::Key_Q, [&window] { window.close(); });
    add(Qt::Key_Escape, [&window] { window.close(); });
}

// Qt ends the program when it finds no display, so a child process tries first.
bool HasDisplay() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.startsWith("offscreen") || platform.startsWith("minimal"))
        return false;
    if (platform.isEmpty() && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return false;
    const pid_t child = fork();
    if (child < 0)
        return false;
    if (child == 0) {
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDERR_FILENO);
        int argc = 1;
        char name[] = "tavix-inspect";
        char *argv[] = {name, nullptr};
        const QGuiApplication probe(argc, argv);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

bool ChoosePlatform(const Options &options) {
    const bool isShown = options.screenshot.empty() && HasDisplay();
    if (!isShown && (options.screenshot.empty() || qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return isShown;
}

RegionHandle OpenRoi(CTavixWnd &window, const std::string &path) {
    if (!window.RoiFileOpen(path.c_str())) {
        std::fprintf(stderr, "tavix-inspect: cannot read regions of interest from '%s'\n",
                     path.c_str());
        return nullptr;
    }
    RegionHandle region(window.GetROI());
    if (!region)
        std::fprintf(stderr, "tavix-inspect: the regions of interest in '%s' are empty\n",
                     path.c_str());
    return region;
}

int ShowWindow(CTavixWnd &window, const Options &options, const Inspection &inspection) {
    Fill(window, options, inspection);
    AddShortcuts(window);
    window.show();
    return QApplication::exec();
}

int RenderScreenshot(CTavixWnd &window, const Options &options, const Inspection &inspection) {
    Fill(window, options, inspection);
    if (!window.grab().save(QString::fromLocal8Bit(options.screenshot.c_str()), "PNG")) {
        std::fprintf(stderr, "tavix-inspect: cannot write '%s'\n", options.screenshot.c_str());
        return 1;
    }
    return 0;
}
