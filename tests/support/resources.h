// Figures of what the process holds: windows, global atoms, GDI objects and
// heap blocks. Tests take one snapshot before some work and one after, and
// compare; the soak program prints them as a table.
//
// GetGuiResources answers 0 under Wine, so GDI objects are counted in the
// process's GDI handle table: 64K entries of 24 bytes (object, owner, unique,
// type, flags, user pointer), a non-zero type for a live object. Windows
// points PEB->GdiSharedHandleTable at it; 32-bit Wine 8 leaves that pointer
// null, and the table is then found as the committed region of that size
// whose entries describe two freshly made objects.
#pragma once

#include <windows.h>

#include <string>

namespace fktest {

struct HeapFigures {
    bool valid = false;  // HeapValidate passed
    long blocks = 0;     // busy blocks (HeapWalk)
    long bytes = 0;      // bytes in busy blocks
};

struct ResourceFigures {
    long windows = 0;     // windows of this thread, children included
    long atoms = 0;       // global string atoms (0xC000-0xFFFF) that have a name
    long gdiObjects = -1; // GDI objects owned by this process; -1 when unknown
    long gdiByType[256] = {};  // the same by table type (0x01 DC, 0x04 region, 0x05 bitmap, 0x0a font, 0x10 brush, 0x30 pen)
    HeapFigures processHeap;  // GetProcessHeap: LocalAlloc and GlobalAlloc blocks live here
    HeapFigures crtHeap;      // the C runtime's heap (malloc, new)
    bool allHeapsValid = false;  // HeapValidate on every heap of the process
};

// A snapshot of the figures. Takes a few hundred milliseconds under Wine
// (the atom scan asks the server 16,384 times).
ResourceFigures TakeResourceFigures();

// The GDI objects of this process (-1 when the shared handle table cannot
// be read); type counts only entries of that table type (0: all).
long CountGdiObjects(int type = 0);
// The same, adding each live entry to byType[its type] (256 counters).
long CountGdiObjects(int type, long* byType);
// Windows of this thread, children included.
long CountThreadWindows();
// Named global string atoms.
long CountGlobalAtoms();
// HeapValidate and HeapWalk on one heap.
HeapFigures MeasureHeap(HANDLE heap);
// HeapValidate on every heap of the process.
bool AllHeapsValid();

// "windows +2, gdi -1" for the figures that differ (heap figures only when
// withHeaps); empty when they agree.
std::string DescribeGrowth(const ResourceFigures& before, const ResourceFigures& after, bool withHeaps);

// True when after holds no more windows, atoms and GDI objects than before
// and every heap validates.
bool HandlesBackAndHeapsValid(const ResourceFigures& before, const ResourceFigures& after);

}  // namespace fktest
