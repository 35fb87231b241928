#include "options.h"

#include <QCommandLineParser>
#include <QStringList>

#include <cstdio>

namespace {

constexpr int MAX_WINDOW_SIDE = 16384;

struct UsageError {
    QString message;
};

long ToNumber(const QCommandLineParser &parser, const QCommandLineOption &option) {
    bool ok = false;
    const long value = parser.value(option).toLong(&ok);
    if (!ok)
        throw UsageError{QString("--%1 needs a whole number, not '%2'")
                             .arg(option.names().constFirst(), parser.value(option))};
    return value;
}

std::optional<long> ToOptionalNumber(const QCommandLineParser &parser,
                                     const QCommandLineOption &option) {
    return parser.isSet(option) ? std::optional(ToNumber(parser, option)) : std::nullopt;
}

void ParseSize(const QString &text, Options &options) {
    const QStringList sides = text.split('x');
    bool ok = sides.size() == 2;
    if (ok) {
        bool heightOk = false;
        options.width = sides[0].toInt(&ok);
        options.height = sides[1].toInt(&heightOk);
        ok = ok && heightOk && options.width > 0 && options.height > 0 &&
             options.width <= MAX_WINDOW_SIDE && options.height <= MAX_WINDOW_SIDE;
    }
    if (!ok)
        throw UsageError{QString("--size needs WIDTHxHEIGHT of 1 to %1 each, not '%2'")
                             .arg(MAX_WINDOW_SIDE)
                             .arg(text)};
}

} // namespace

std::optional<Options> ParseOptions(int argc, char **argv, int &exitCode) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);

    const QCommandLineOption csv("csv", "Write the blobs to FILE as comma-separated values.",
                                 "FILE");
    const QCommandLineOption points(
        "points", "Write the pixels of each blob to FILE, a line each, as \"x,y;\".", "FILE");
    const QCommandLineOption roi(
        "roi", "Look only where the regions of interest of the file FILE (.roix) lie.", "FILE");
    const QCommandLineOption screenshot(
        "screenshot", "Render the window to the PNG file FILE and exit; needs no display.", "FILE");
    const QCommandLineOption size("size", "Size of the window or screenshot in pixels.", "WxH",
                                  "1280x960");
    const QCommandLineOption dark("dark", "Look for dark blobs instead of bright ones.");
    const QCommandLineOption minWidth("min-width", "Smallest right - left of a blob (1).", "N");
    const QCommandLineOption maxWidth("max-width", "right - left stays below N (image width).",
                                      "N");
    const QCommandLineOption minHeight("min-height", "Smallest bottom - top of a blob (1).", "N");
    const QCommandLineOption maxHeight("max-height", "bottom - top stays below N (image height).",
                                       "N");
    const QCommandLineOption help({"h", "help"}, "Print this text.");

    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Finds the automatic threshold of a picture, makes it two-level, and lists and shows its "
        "blobs.");
    parser.addPositionalArgument("IMAGE", "The picture.");
    parser.addOptions(
        {csv, points, roi, screenshot, size, dark, minWidth, maxWidth, minHeight, maxHeight, help});

    try {
        if (!parser.parse(arguments))
            throw UsageError{parser.errorText()};
        if (parser.isSet(help)) {
            std::fputs(parser.helpText().toLocal8Bit().constData(), stdout);
            exitCode = 0;
            return std::nullopt;
        }
        if (parser.positionalArguments().size() != 1)
            throw UsageError{"exactly one IMAGE is needed"};

        Options options;
        options.image = parser.positionalArguments().constFirst().toLocal8Bit().toStdString();
        options.csv = parser.value(csv).toLocal8Bit().toStdString();
        options.points = parser.value(points).toLocal8Bit().toStdString();
        options.roi = parser.value(roi).toLocal8Bit().toStdString();
        options.screenshot = parser.value(screenshot).toLocal8Bit().toStdString();
        ParseSize(parser.value(size), options);
        options.dark = parser.isSet(dark);
        options.minWidth = ToOptionalNumber(parser, minWidth);
        options.maxWidth = ToOptionalNumber(parser, maxWidth);
        options.minHeight = ToOptionalNumber(parser, minHeight);
        options.maxHeight = ToOptionalNumber(parser, maxHeight);
        return options;
    } catch (const UsageError &error) {
        std::fprintf(stderr, "tavix-inspect: %s (try --help)\n",
                     error.message.toLocal8Bit().constData());
        exitCode = 2;
        return std::nullopt;
    }
}
