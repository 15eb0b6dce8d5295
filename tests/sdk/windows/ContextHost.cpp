// A program without a manifest that makes an activation context from a file: the module's manifest,
// and the one inside the module.
//
//   activation_context MODULE MANIFEST PHOTO

#include <filesystem>
#include <string>
#include <windows.h>

#include "Activation.h"

namespace {

void CheckContext(const ACTCTXW& context, const std::wstring& photo) {
  const HANDLE handle = CreateActCtxW(&context);
  Check(handle != INVALID_HANDLE_VALUE, "CreateActCtx");
  if (handle == INVALID_HANDLE_VALUE) return;
  CheckActivation(photo, handle);
  ReleaseActCtx(handle);
}

ACTCTXW ContextOf(const std::wstring& path) {
  ACTCTXW context = {};
  context.cbSize = sizeof(context);
  context.lpSource = path.c_str();
  return context;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const std::wstring module = std::filesystem::absolute(argv[1]).wstring();
  const std::wstring manifest = std::filesystem::absolute(argv[2]).wstring();
  const std::wstring photo = std::filesystem::path(argv[3]).wstring();

  CheckNoActivation();
  CheckContext(ContextOf(manifest), photo);
  CheckNoActivation();

  ACTCTXW embedded = ContextOf(module);
  embedded.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
  embedded.lpResourceName = MAKEINTRESOURCEW(1);
  CheckContext(embedded, photo);
  CheckNoActivation();
  return FailureCount() == 0 ? 0 : 1;
}
