#include "app/program.h"

#include "app/consoleattachment.h"
#include "app/log.h"
#include "app/messagehandler.h"
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
    installMessageHandler(&programLog);
    const std::unique_ptr<CMainWindow> window = createWindow(makeController);
    window->show();
    return QApplication::exec();
}

} // namespace

int runProgram(int argc, char *argv[], const CMainWindow::ControllerFactory &makeController)
{
    initResources();
    setApplicationAttributes();
    const int result = runApplication(argc, argv, makeController);
    // The log goes with the other globals; whatever they still say must not reach it.
    removeMessageHandler();
    return result;
}
