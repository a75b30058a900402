#include <ZORBase/Package.h>
#include <zor/Program.h>

int main(int argc, char** argv) {
  const ZORBase::TPackageSession session;
  return ZORBase::Tool::RunProgram(argc, argv);
}
