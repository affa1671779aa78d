// The two functions by which libFuzzer drives the target that is linked with it.
#include "fuzz/support/FuzzTarget.h"

#include <QtGlobal>

extern "C" int LLVMFuzzerInitialize(int*, char***);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerInitialize(int*, char***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    hx::fuzz::FuzzInput input(data, size);
    hx::fuzz::Target::last->run(input);
    return 0;
}
