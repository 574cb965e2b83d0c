// The DLL exports every name of its .def under the plain name, and none under its stdcall decoration.

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
    std::ifstream def(std::string("Z:") + src + "/frame/fldkit32.def");
    std::string line;
    for (bool inExports = false; std::getline(def, line);) {
        size_t start = line.find_first_not_of(" \t\r");
        if (start == std::string::npos || line[start] == ';') continue;
        std::string word = line.substr(start, line.find_first_of(" \t\r", start) - start);
        if (inExports) names.push_back(word);
        inExports = inExports || word == "EXPORTS";
    }
    return names;
}

TEST(Exports, EveryDefNameIsExportedUndecorated) {
    std::vector<std::string> names = DefExports();
    ASSERT_GT(names.size(), 30u) << "FK_SOURCE_DIR must point at the sources";
    HMODULE dll = GetModuleHandleA("FLDKIT32.dll");
    ASSERT_NE(dll, nullptr);
    for (const std::string& decorated : names) {
        EXPECT_NE(GetProcAddress(dll, decorated.substr(0, decorated.find('@')).c_str()), nullptr) << decorated;
        EXPECT_EQ(GetProcAddress(dll, decorated.c_str()), nullptr) << decorated;
        EXPECT_EQ(GetProcAddress(dll, ("_" + decorated).c_str()), nullptr) << decorated;
    }
}

}  // namespace
