// Files the tests write into the temporary folder: tables and pictures.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

namespace fktest {

// Writes text (tables, or any bytes) to fileName in the temporary folder and returns the path.
inline std::string WriteTable(const char* fileName, const std::string& text) {
    char dir[MAX_PATH] = {};
    GetTempPathA(MAX_PATH, dir);
    const std::string path = std::string(dir) + fileName;
    if (FILE* f = std::fopen(path.c_str(), "wb")) std::fwrite(text.data(), 1, text.size(), f), std::fclose(f);
    return path;
}

// A file of this process's own, removed again when the object goes.
class TempFile {
public:
    template <typename Bytes>
    TempFile(const char* name, const Bytes& bytes)
        : path_(WriteTable(("fk_" + std::to_string(GetCurrentProcessId()) + "_" + name).c_str(),
                           {bytes.begin(), bytes.end()})) {}
    ~TempFile() { DeleteFileA(path_.c_str()); }
    TempFile(const TempFile&) = delete;
    const char* path() const { return path_.c_str(); }

private:
    std::string path_;
};

}  // namespace fktest
