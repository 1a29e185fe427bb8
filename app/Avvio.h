#pragma once

// Start of the program: the application object, the context and the start
// screen. Kept out of main() so the screenshot tool starts the same way.
namespace Avvio {

// False (with one line on stderr) when there is no display to show windows on.
bool displayDisponibile();
void preparaApplicazione();
int esegui(int argc, char *argv[]);

} // namespace Avvio
