#include "app/arguments.h"
#include "app/session/output.h"

#include <exception>

int main(int argc, char** argv) {
  using namespace veltora::app;
  try {
    int status = kSuccess;
    const Run run = readArguments(argc, argv, status);
    return run ? run() : status;
  } catch (const std::exception& error) {
    printError(std::string("erreur inattendue : ") + error.what());
    return kFailure;
  }
}
