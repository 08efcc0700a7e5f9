// SPDX-License-Identifier: MIT
#include "app/program.h"

#include "app/consoleattachment.h"
#include "app/log.h"
#include "app/resources.h"

#include <QApplication>

#include <memory>

namespace {

CLog programLog(QStringLiteral("VextralRemoteControl"));

/// What Qt takes only before the application object exists.
void setApplicationAttributes()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setAttribute(Qt::AA_DisableWindowContextHelpButton);
#endif
    // Nothing here is drawn with OpenGL, which Qt makes every top-level window ready for otherwise: on X that
    // is more than a third of the start and more than half of the memory.
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

std::unique_ptr<CMainWindow> createWindow(const CMainWindow::ControllerFactory &makeController)
{
    if (makeController)
        return std::make_unique<CMainWindow>(makeController);
    return std::make_unique<CMainWindow>();
}

int runApplication(int &argc, char **argv, const CMainWindow::ControllerFactory &makeController)
{
    QApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(VEXTRAL_VERSION));
    attachToParentConsole();
    programLog.install();
    const std::unique_ptr<CMainWindow> window = createWindow(makeController);
    window->show();
    return QApplication::exec();
}

} // namespace

int runProgram(int argc, char *argv[], const CMainWindow::ControllerFactory &makeController)
{
    initResources();
    setApplicationAttributes();
    return runApplication(argc, argv, makeController);
}
