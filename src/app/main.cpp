#include "app/arguments.h"
#include "app/session/output.h"
#include "base/passing_file.h"

#include <exception>

int main(int argc, char** argv) {
  using namespace veltora::app;
  try {
    int status = kSuccess;
    veltora::base::surveillerSignaux();
    const Run run = readArguments(argc, argv, status);
    if (run) status = run();
    return outputWritten() ? status : kFailure;
  } catch (const std::exception& error) {
    printError(std::string("erreur inattendue : ") + error.what());
    return kFailure;
  }
}
