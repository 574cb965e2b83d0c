// The DLL exports every name of its .def under the plain name, and none
// under its stdcall decoration.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <windows.h>

namespace {

std::vector<std::string> DefExports() {
    const char* src = std::getenv("FK_SOURCE_DIR");
    std::vector<std::string> names;
    if (src == nullptr) return names;
    std::string path = std::string("Z:") + src + "/frame/fldkit32.def";
    std::ifstream def(path);
    std::string line;
    bool inExports = false;
    while (std::getline(def, line)) {
        size_t start = line.find_first_not_of(" \t\r");
        if (start == std::string::npos || line[start] == ';') continue;
        std::string word = line.substr(start, line.find_first_of(" \t\r", start) - start);
        if (word == "EXPORTS") {
            inExports = true;
        } else if (inExports) {
            names.push_back(word);
        }
    }
    return names;
}

TEST(Exports, EveryDefNameIsExportedUndecorated) {
    std::vector<std::string> names = DefExports();
    ASSERT_GT(names.size(), 30u) << "FK_SOURCE_DIR must point at the sources";
    HMODULE dll = GetModuleHandleA("FLDKIT32.dll");
    ASSERT_NE(dll, nullptr);
    for (const std::string& decorated : names) {
        std::string plain = decorated.substr(0, decorated.find('@'));
        EXPECT_NE(GetProcAddress(dll, plain.c_str()), nullptr) << plain;
        EXPECT_EQ(GetProcAddress(dll, decorated.c_str()), nullptr) << decorated;
        EXPECT_EQ(GetProcAddress(dll, ("_" + decorated).c_str()), nullptr) << decorated;
    }
}

}  // namespace
