// Writes the manifest of the server.
#include "com/manifest.h"

#include "com/identifiers.h"
#include "com/system.h"
#include "interface/library.h"
#include "text/unicode.h"

namespace zentaro::com {
namespace {

std::string textOf(const GUID& id) {
  wchar_t text[40];
  ::StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return utf8(narrow(text));
}

std::string creatableClass(const ClassDescription& description) {
  return "    <comClass clsid=\"" + textOf(identifiersOf(description.name).classId) + "\" progid=\"" +
         std::string(libraryName) + "." + std::string(description.name) + "\" tlbid=\"" + textOf(libraryId) +
         "\" threadingModel=\"Apartment\"/>\n";
}

}  // namespace

std::string serverManifest(const std::string& processor) {
  std::string classes;
  for (const ClassDescription* description : libraryClasses())
    if (description->create != nullptr) classes += creatableClass(*description);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
         "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
         "  <assemblyIdentity type=\"win32\" name=\"Zentaro\" version=\"" +
         std::to_string(libraryMajor) + "." + std::to_string(libraryMinor) +
         ".0.0\" processorArchitecture=\"" + processor + "\"/>\n  <file name=\"Zentaro.dll\">\n" + classes +
         "    <typelib tlbid=\"" + textOf(libraryId) + "\" version=\"" + std::to_string(libraryMajor) + "." +
         std::to_string(libraryMinor) + "\" helpdir=\"\"/>\n  </file>\n</assembly>\n";
}

}  // namespace zentaro::com
