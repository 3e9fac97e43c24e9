// The services of Windows: settings in the registry, files, the code page, regional settings.
#include "platform/windows/system.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <filesystem>
#include <fstream>

#include "automation/automation_error.h"
#include "platform/services.h"
#include "platform/system_paths.h"

namespace zentaro::windows {
namespace {

TEST(WindowsSystem, SettingsAreTextsOfTheRegistryReadAfresh) {
  const wchar_t key[] = LR"(Software\VB and VBA Program Settings\TRV\Config\Test)";
  SettingsStore& store = *systemServices().settings;
  const auto read = [&] { return store.read("TRV", "Config\\Test", "value", u"default"); };
  EXPECT_EQ(read(), u"default");
  const std::wstring longText(700, L'\x00F1');
  for (const std::wstring& text : {std::wstring(L"0"), std::wstring(), longText}) {
    ::RegSetKeyValueW(HKEY_CURRENT_USER, key, L"Value", REG_SZ, text.c_str(),
                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    EXPECT_EQ(read(), narrow(text));
  }
  const DWORD number = 1;
  ::RegSetKeyValueW(HKEY_CURRENT_USER, key, L"Value", REG_DWORD, &number, sizeof number);
  EXPECT_EQ(read(), u"default") << "no text";
  ::RegDeleteTreeW(HKEY_CURRENT_USER, key);
}

TEST(WindowsSystem, APortLeadsWhereItsSettingSays) {
  const wchar_t key[] = LR"(Software\VB and VBA Program Settings\TRV\Config\ModComm)";
  SerialServices& serial = *systemServices().serial;
  struct {
    const wchar_t* device;
    const char* path;
    DWORD error;  // of opening it
  } const rows[] = {
      {L"", "COM7", ERROR_FILE_NOT_FOUND},
      {L"COM12", R"(\\.\COM12)", ERROR_FILE_NOT_FOUND},
      {L"tcp://127.0.0.1:1", "tcp://127.0.0.1:1", 10061},
      {L"tcp://no..host:4001", "tcp://no..host:4001", 11001},
      {L"tcp://127.0.0.1", "tcp://127.0.0.1", ERROR_INVALID_NAME},
  };
  for (const auto& row : rows) {
    ::RegSetKeyValueW(HKEY_CURRENT_USER, key, L"COM7", REG_SZ, row.device,
                      static_cast<DWORD>((std::wcslen(row.device) + 1) * sizeof(wchar_t)));
    EXPECT_EQ(devicePath("COM7"), row.path);
    EXPECT_EQ(serial.CreateFileA("COM7", 0xC0000000, 0, 3, 0x80), invalidSerialHandle);
    EXPECT_EQ(serial.GetLastError(), row.error) << row.path;
    EXPECT_NE(serial.FormatMessageA(row.error), "");
  }
  ::RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"COM7");
}

TEST(WindowsSystem, FilesAreAppendedToByAllWritersAndRefusedByReason) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path();
  const std::string path = (folder / "zentaro-trace.txt").string();
  std::ofstream(path) << "before\n";
  std::error_code error;
  Files& files = *systemServices().files;
  {
    const auto first = files.openForAppend(path, error), second = files.openForAppend(path, error);
    ASSERT_TRUE(first && second && !error);
    EXPECT_FALSE(first->write("one\n"));
    EXPECT_FALSE(second->write("two\n"));
    EXPECT_FALSE(first->write("three\n"));
  }
  std::string contents;
  std::getline(std::ifstream(path), contents, '\0');
  EXPECT_EQ(contents, "before\none\ntwo\nthree\n");
  std::filesystem::remove(path);
  EXPECT_EQ(files.openForAppend((folder / "none" / "t").string(), error), nullptr);
  EXPECT_EQ(fileError(error).number(), 76);
  EXPECT_EQ(files.openForAppend(folder.string(), error), nullptr);
  EXPECT_EQ(fileError(error).number(), 75);
}

TEST(WindowsSystem, EveryByteOfTheCodePageSurvivesTheWayThereAndBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  const CodePage& page = *systemServices().codePage;
  EXPECT_EQ(page.bytes(page.text(all)), all);
}

TEST(WindowsSystem, RegionalSettingsAreTheUsers) {
  const Regional regional = systemServices().regional->current();
  wchar_t separator[8];
  ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, 8);
  EXPECT_EQ(regional.decimalSeparator, static_cast<char16_t>(separator[0]));
  EXPECT_TRUE(isShortDate(regional.shortDate));
  for (const char16_t* odd :
       {u"ddd dd/mm/yyyy", u"dd 'de' mm yyyy", u"dd/mm", u"d/m/yyy", u"dd/dd/mm/yy", u""})
    EXPECT_FALSE(isShortDate(odd));
}

}  // namespace
}  // namespace zentaro::windows
