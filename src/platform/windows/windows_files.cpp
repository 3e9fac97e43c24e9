// Files opened for appending: the system itself puts every write at the end, whoever else writes.
#include "platform/windows/system.h"
#include "platform/windows/windows_services.h"
#include "text/unicode.h"

namespace zentaro::windows {
namespace {

std::error_code lastError() { return {static_cast<int>(::GetLastError()), std::system_category()}; }

class WindowsAppendFile : public AppendFile {
 public:
  explicit WindowsAppendFile(HANDLE file) : file_(file) {}
  WindowsAppendFile(const WindowsAppendFile&) = delete;
  WindowsAppendFile& operator=(const WindowsAppendFile&) = delete;
  ~WindowsAppendFile() override { ::CloseHandle(file_); }

  std::error_code write(std::string_view bytes) override {
    DWORD written = 0;
    const bool done =
        ::WriteFile(file_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0;
    return done ? std::error_code() : lastError();
  }

 private:
  HANDLE file_;
};

class WindowsFiles : public Files {
 public:
  std::unique_ptr<AppendFile> openForAppend(const std::string& path, std::error_code& error) override {
    constexpr DWORD everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE const file = ::CreateFileW(wide(utf16(path)).c_str(), FILE_APPEND_DATA | SYNCHRONIZE, everybody,
                                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    error = file == INVALID_HANDLE_VALUE ? lastError() : std::error_code();
    return error ? nullptr : std::make_unique<WindowsAppendFile>(file);
  }
};

}  // namespace

Files& files() { return lasting<WindowsFiles>(); }

}  // namespace zentaro::windows
