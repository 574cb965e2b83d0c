// The DLL exports every name of its .def under the plain name, and none under its stdcall decoration.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <windows.h>

#include "include/fldkit.h"

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
    HMODULE dll = GetModuleHandleA(FK_DLL_NAME);
    ASSERT_NE(dll, nullptr);
    for (const std::string& decorated : names) {
        EXPECT_NE(GetProcAddress(dll, decorated.substr(0, decorated.find('@')).c_str()), nullptr) << decorated;
        EXPECT_EQ(GetProcAddress(dll, decorated.c_str()), nullptr) << decorated;
        EXPECT_EQ(GetProcAddress(dll, ("_" + decorated).c_str()), nullptr) << decorated;
    }
}

}  // namespace

// The version resource, as a file's properties page or an installer reads it.
TEST(Exports, VersionResourceNamesTheFileAndTheProjectVersion) {
    char path[MAX_PATH] = "";
    ASSERT_GT(GetModuleFileNameA(GetModuleHandleA(FK_DLL_NAME), path, MAX_PATH), 0u);
    DWORD ignored = 0;
    std::vector<char> data(GetFileVersionInfoSizeA(path, &ignored));
    ASSERT_FALSE(data.empty());
    ASSERT_TRUE(GetFileVersionInfoA(path, 0, static_cast<DWORD>(data.size()), data.data()));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueA(data.data(), "\\", reinterpret_cast<void**>(&fixed), &length));
    const std::string version = FK_PROJECT_VERSION;  // "major.minor.patch"
    const int major = std::atoi(version.c_str()), minor = std::atoi(version.c_str() + version.find('.') + 1);
    EXPECT_EQ(fixed->dwFileVersionMS, static_cast<DWORD>(MAKELONG(minor, major)));
    auto text = [&](const char* name) {
        char* value = nullptr;
        UINT size = 0;
        const std::string key = std::string("\\StringFileInfo\\040904B0\\") + name;
        return VerQueryValueA(data.data(), key.c_str(), reinterpret_cast<void**>(&value), &size) ? value : "(none)";
    };
    EXPECT_EQ(std::to_string(fixed->dwFileType) + " " + text("OriginalFilename") + " " + text("FileVersion") + " " +
                  text("ProductVersion") + " " + text("ProductName"),
              std::to_string(VFT_DLL) + " " FK_DLL_NAME " " + version + " " + version + " FieldKit");
}
