/* Linked by lld-link against fldkit32.lib (fldkit64.lib when 64-bit),
   Microsoft's import-library format: in 32-bit code the decorated stdcall
   names bind to the DLL's plain exports. No C runtime and no Windows
   headers: it declares what it calls. */
typedef void* HANDLE;
#if defined(_M_X64)
#define CALL /* one calling convention in 64-bit code */
#else
#define CALL __stdcall
#endif
__declspec(dllimport) char* CALL lstrcomma(char* text, char sep, char dp);
__declspec(dllimport) int CALL lstrcount(const char* text, char c);
__declspec(dllimport) int CALL twGetMethodParam(char* method, const char* keyword, char* argument);
__declspec(dllimport) char* CALL lstrcpyA(char* to, const char* from);
__declspec(dllimport) int CALL lstrlenA(const char* text);
__declspec(dllimport) HANDLE CALL GetStdHandle(unsigned long which);
__declspec(dllimport) int CALL WriteFile(HANDLE file, const void* bytes, unsigned long count,
                                              unsigned long* written, void* overlapped);
__declspec(dllimport) void CALL ExitProcess(unsigned code);

void CALL start(void) {
    char number[32], method[40], argument[40];
    unsigned long written = 0;
    int ok;
    lstrcpyA(number, "1234567");
    lstrcpyA(method, "@MND@RNG(1,100)");
    method[sizeof "@MND@RNG(1,100)"] = 0; /* the two spare bytes the search may read */
    lstrcomma(number, ',', '.');
    ok = lstrcount(number, ',') == 2 && twGetMethodParam(method, "@RNG", argument) == 1 && argument[0] == '1';
    WriteFile(GetStdHandle((unsigned long)-11), number, (unsigned long)lstrlenA(number), &written, 0);
    ExitProcess(ok ? 0 : 1);
}
