// What the process holds (windows, atoms, GDI objects, heap blocks), compared before and after some work.
// GetGuiResources answers 0 under Wine, so GDI objects are counted in the process's GDI handle table.
#pragma once

#include <windows.h>
#include <string>

namespace fktest {
struct HeapFigures {
    long blocks = 0;  // busy blocks (HeapWalk)
};

struct ResourceFigures {
    long windows = 0;          // windows of this thread, children included
    long atoms = 0;            // named global string atoms
    long gdiObjects = -1;      // -1 when the handle table cannot be read
    HeapFigures processHeap;   // LocalAlloc and GlobalAlloc blocks
    HeapFigures crtHeap;       // malloc and new
    bool allHeapsValid = false;
};

ResourceFigures TakeResourceFigures();  // a few hundred ms under Wine (the atom scan)
HeapFigures MeasureHeap(HANDLE heap);
// "windows +2 (3 -> 5), gdi -1 (7 -> 6)" for the figures that differ; empty when they agree.
std::string DescribeGrowth(const ResourceFigures& before, const ResourceFigures& after, bool withHeaps);

}  // namespace fktest
