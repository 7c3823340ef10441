// The program: registers every module's forms and starts the main form in the current folder.
#pragma once

class QApplication;

namespace app {

// Registers the forms of every module with the runtime (the program and tests call it).
void registerAllForms();
// Starts the program in the current folder on a running QApplication; returns its exit code.
int run(QApplication& application);

}  // namespace app
