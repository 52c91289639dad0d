#include "hostwindow.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>
#include <QStandardPaths>
#include <QTimer>

#include <cstdio>

namespace {

// Menu icons come from the desktop's theme. Breeze stands in for icons it lacks, and for
// the theme itself where there is none (a bare X server, the offscreen platform).
void useIconThemes()
{
    QStringList paths = QIcon::themeSearchPaths();
    const QStringList systemPaths = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
        QStringLiteral("icons"), QStandardPaths::LocateDirectory);
    for (const QString &path : systemPaths) {
        if (!paths.contains(path))
            paths.append(path);
    }
    QIcon::setThemeSearchPaths(paths);
    QIcon::setFallbackThemeName(QStringLiteral("breeze"));
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(QStringLiteral("breeze"));
}

// Renders the window once the document is in and painted, writes it to path and quits.
void takeScreenshotAndQuit(HostWindow &window, const QString &path)
{
    auto shoot = [&window, path] {
        // The engine paints asynchronously; give it a moment after the load.
        QTimer::singleShot(1500, &window, [&window, path] {
            const bool ok = window.grab().save(path);
            std::fprintf(ok ? stdout : stderr, "%s %s\n",
                ok ? "Screenshot written to" : "Could not write the screenshot to",
                qPrintable(QFileInfo(path).absoluteFilePath()));
            QCoreApplication::exit(ok ? 0 : 1);
        });
    };
    QObject::connect(window.editor(), &Vantry::HTMLEditorComponent::DocumentLoaded, &window, shoot,
        Qt::SingleShotConnection);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantry-editor"));
    QApplication::setOrganizationName(QStringLiteral("Vantry"));
    QApplication::setApplicationDisplayName(QStringLiteral("Vantry HTML Editor"));
    useIconThemes();

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Demo host of the Vantry HTML editor"));
    parser.addHelpOption();
    const QCommandLineOption settingsOption(QStringLiteral("settings"),
        QStringLiteral("Read the editor's properties from FILE.ini and write them back on exit."),
        QStringLiteral("FILE.ini"));
    const QCommandLineOption screenshotOption(QStringLiteral("screenshot"),
        QStringLiteral("Render the window once into FILE.png and exit."),
        QStringLiteral("FILE.png"));
    parser.addOption(settingsOption);
    parser.addOption(screenshotOption);
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("An HTML file to open."));
    parser.process(app);

    HostWindow window(parser.value(settingsOption));
    const QString screenshot = parser.value(screenshotOption);
    if (!screenshot.isEmpty())
        takeScreenshotAndQuit(window, screenshot);

    window.show();
    const QStringList files = parser.positionalArguments();
    if (!files.isEmpty()) {
        // Once the window shows: the editor waits for its surface and reports a file it
        // cannot load in a message box of its own.
        const QString file = files.first();
        QTimer::singleShot(0, &window, [&window, file] { window.openFile(file); });
    }

    const int status = app.exec();
    QString error;
    if (!window.saveSettings(&error)) {
        std::fprintf(stderr, "Could not save the settings: %s\n", qPrintable(error));
        return status ? status : 3;
    }
    return status;
}
