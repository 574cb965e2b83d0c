// The DLL exports every name of its .def under the plain name, and none under its stdcall decoration.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <windows.h>

#include "include/fldkit.h"

namespace {

TEST(Exports, EveryDefNameIsExportedUndecorated) {
    const char* src = std::getenv("FK_SOURCE_DIR");
    ASSERT_NE(src, nullptr) << "FK_SOURCE_DIR must point at the sources";
    std::ifstream def(std::string("Z:") + src + "/frame/fldkit32.def");
    HMODULE dll = GetModuleHandleA(FK_DLL_NAME);
    int names = 0;
    bool inExports = false;
    for (std::string decorated, comment; def >> decorated;) {
        if (decorated[0] == ';') {
            std::getline(def, comment);
        } else if (inExports) {
            EXPECT_NE(GetProcAddress(dll, decorated.substr(0, decorated.find('@')).c_str()), nullptr) << decorated;
            EXPECT_EQ(GetProcAddress(dll, decorated.c_str()), nullptr) << decorated;
            EXPECT_EQ(GetProcAddress(dll, ("_" + decorated).c_str()), nullptr) << decorated;
            ++names;
        }
        inExports = inExports || decorated == "EXPORTS";
    }
    EXPECT_GT(names, 30);
}

}  // namespace

// The version resource, as a file's properties page or an installer reads it.
TEST(Exports, VersionResourceNamesTheFileAndTheProjectVersion) {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(GetModuleHandleA(FK_DLL_NAME), path, MAX_PATH);
    DWORD ignored = 0;
    std::vector<char> data(GetFileVersionInfoSizeA(path, &ignored) + 1);
    ASSERT_TRUE(GetFileVersionInfoA(path, 0, static_cast<DWORD>(data.size()), data.data()));
    auto read = [&](const std::string& key) {
        char* value = nullptr;
        UINT size = 0;
        return VerQueryValueA(data.data(), key.c_str(), reinterpret_cast<void**>(&value), &size) ? value : nullptr;
    };
    const auto* fixed = reinterpret_cast<const VS_FIXEDFILEINFO*>(read("\\"));
    ASSERT_NE(fixed, nullptr);
    std::string texts = std::to_string(HIWORD(fixed->dwFileVersionMS)) + "." +
                        std::to_string(LOWORD(fixed->dwFileVersionMS)) + " " + std::to_string(fixed->dwFileType);
    for (const char* name : {"OriginalFilename", "FileVersion", "ProductVersion", "ProductName"}) {
        const char* value = read(std::string("\\StringFileInfo\\040904B0\\") + name);
        texts += std::string(" ") + (value ? value : "(none)");
    }
    const std::string version = FK_PROJECT_VERSION;  // "major.minor.patch"
    EXPECT_EQ(texts, version.substr(0, version.rfind('.')) + " " + std::to_string(VFT_DLL) + " " FK_DLL_NAME " " +
                         version + " " + version + " FieldKit");
}
