// Child processes of Windows; a job ends the child when its parent is killed.
#include "base/system/child_process.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "base/system/interruption.h"
#include "base/terminal/language.h"
#include "base/terminal/windows/text.h"

namespace zentaro::base {

namespace {

using terminal::wide;

HANDLE handleOf(std::intptr_t number) { return reinterpret_cast<HANDLE>(number); }
std::intptr_t numberOf(HANDLE handle) { return reinterpret_cast<std::intptr_t>(handle); }

[[noreturn]] void fail(const char* what) {
  throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), what);
}

/// As the other side takes it apart again: in quotes, with those inside escaped.
std::wstring quoted(const std::string& word) {
  std::wstring made = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t character : wide(word)) {
    if (character == L'"') made.append(backslashes + 1, L'\\');
    backslashes = character == L'\\' ? backslashes + 1 : 0;
    made += character;
  }
  return made.append(backslashes, L'\\') + L"\"";
}

std::wstring commandLine(const std::vector<std::string>& words) {
  std::wstring line;
  for (const std::string& word : words) line += (line.empty() ? L"" : L" ") + quoted(word);
  return line;
}

constexpr int notStarted = 127;

struct Pipe {
  HANDLE reading = nullptr, writing = nullptr;
};

/// A pipe of which the child gets one end.
Pipe pipeWith(HANDLE Pipe::*childsEnd) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  Pipe pipe;
  if (::CreatePipe(&pipe.reading, &pipe.writing, &inherited, 0) == 0) fail("CreatePipe");
  ::SetHandleInformation(childsEnd == &Pipe::writing ? pipe.reading : pipe.writing, HANDLE_FLAG_INHERIT, 0);
  return pipe;
}

/// Whatever is in it ends when its last handle is closed, which the death of this process does.
HANDLE jobOf(HANDLE process) {
  HANDLE const job = ::CreateJobObjectW(nullptr, nullptr);
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  ::SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
  ::AssignProcessToJobObject(job, process);
  return job;
}

std::wstring ownPath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

}  // namespace

std::string companionProgram(const std::string& name) {
  const auto beside = std::filesystem::path(ownPath()).parent_path() / (name + ".exe");
  std::error_code failed;
  return std::filesystem::exists(beside, failed) ? terminal::narrow(beside.wstring()) : name + ".exe";
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the other system hands the words on
int runProgram(std::vector<std::string> words) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  std::wstring line = commandLine(words);
  if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process) ==
      0)
    return notStarted;
  ::CloseHandle(process.hThread);
  DWORD status = notStarted;
  ::WaitForSingleObject(process.hProcess, INFINITE);
  ::GetExitCodeProcess(process.hProcess, &status);
  ::CloseHandle(process.hProcess);
  return static_cast<int>(status);
}

// There is no taking its place: this one waits for it, and ends with its status. Ctrl-C is the other one's.
void becomeProgram(std::vector<std::string> words, const std::string& variable, const std::string& value) {
  const Interruption whileItRuns;
  ::SetEnvironmentVariableW(wide(variable).c_str(), wide(value).c_str());
  const int status = runProgram(words);
  if (status == notStarted)
    throw std::runtime_error(terminal::say("no se puede iniciar {}", "cannot start {}", {words.at(0)}));
  ::ExitProcess(static_cast<UINT>(status));
}

ChildProcess::ChildProcess(const std::vector<std::string>& words) {
  const Pipe errors = pipeWith(&Pipe::writing), input = pipeWith(&Pipe::reading);
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  HANDLE const nowhere = ::CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                       OPEN_EXISTING, 0, nullptr);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = input.reading;
  start.hStdOutput = nowhere;
  start.hStdError = errors.writing;
  PROCESS_INFORMATION process{};
  std::wstring line = commandLine(words);
  const bool isStarted = ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE,
                                          CREATE_NEW_PROCESS_GROUP | CREATE_NO_WINDOW | CREATE_SUSPENDED,
                                          nullptr, nullptr, &start, &process) != 0;
  if (isStarted) {
    job_ = numberOf(jobOf(process.hProcess));
    id_ = numberOf(process.hProcess);
    ::ResumeThread(process.hThread);
    ::CloseHandle(process.hThread);
  } else {
    const std::string complaint =
        terminal::say("no se puede iniciar {}: ", "cannot start {}: ", {words.at(0)}) + terminal::reasonOf() +
        "\n";
    DWORD written = 0;
    ::WriteFile(errors.writing, complaint.data(), static_cast<DWORD>(complaint.size()), &written, nullptr);
  }
  for (HANDLE const given : {errors.writing, input.reading, nowhere}) ::CloseHandle(given);
  errors_ = numberOf(errors.reading);
  input_ = numberOf(input.writing);
}

ChildProcess::~ChildProcess() {
  constexpr DWORD longestEnd = 5000;
  constexpr std::string_view quit = "quit\n";
  DWORD written = 0;
  ::WriteFile(handleOf(input_), quit.data(), static_cast<DWORD>(quit.size()), &written, nullptr);
  ::CloseHandle(handleOf(input_));
  ignoreErrors();
  if (id_ != -1) {
    ::WaitForSingleObject(handleOf(id_), longestEnd);
    ::CloseHandle(handleOf(id_));
    ::CloseHandle(handleOf(job_));  // ends it where it has not ended
  }
  drain_.join();
  ::CloseHandle(handleOf(errors_));
}

void ChildProcess::ignoreErrors() {
  if (drain_.joinable()) return;
  drain_ = std::thread([errors = handleOf(errors_)] {
    std::array<char, 4096> unread{};
    DWORD count = 0;
    while (::ReadFile(errors, unread.data(), unread.size(), &count, nullptr) != 0) continue;
  });
}

bool ChildProcess::readErrorLine(std::string& line, int milliseconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
  line.clear();
  while (Clock::now() < end) {
    DWORD waiting = 0, count = 0;
    if (::PeekNamedPipe(handleOf(errors_), nullptr, 0, nullptr, &waiting, nullptr) == 0) return false;
    if (waiting == 0) {
      ::Sleep(5);
      continue;
    }
    char character = 0;
    if (::ReadFile(handleOf(errors_), &character, 1, &count, nullptr) == 0 || count == 0) return false;
    if (character == '\n') return true;
    if (character != '\r') line += character;
  }
  return false;
}

}  // namespace zentaro::base
