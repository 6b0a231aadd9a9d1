#include <windows.h>

#include "PluginManagerApp.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    CPluginManagerApp app;
    app.InitInstance();
    return app.ExitInstance();
}
