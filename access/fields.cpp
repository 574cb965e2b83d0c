// What a screen reader learns of the entry fields: role text, the label as
// name, the shown text as value, what the field accepts as description.

#include <oleacc.h>

#include <cstdio>

#include "access/classes.h"
#include "fields/entry_field.h"
#include "fields/number_field.h"
#include "frame/method_text.h"
#include "include/fldkit.h"
#include "links/control_links.h"

namespace fk {

namespace {

const FieldClass& Field(const void* owner) { return *static_cast<const FieldClass*>(owner); }

std::string Trimmed(std::string s) {
    while (!s.empty() && s.back() == ' ') s.pop_back();
    return s;
}

std::string ClassName(HWND h) {
    char name[32] = "";
    GetClassNameA(h, name, sizeof name);
    return name;
}

bool Is(const std::string& cls, const char* name) { return lstrcmpiA(cls.c_str(), name) == 0; }

void Append(std::string& to, const std::string& part) {
    if (part.empty()) return;
    if (!to.empty()) to += ", ";
    to += part;
}

std::string StringAccepts(HWND h, const FieldClass& cls) {
    const LONG style = GetWindowLongA(h, GWL_STYLE);
    std::string out;
    if (style & STR_NUMERIC) out = "digits";
    else if (style & STR_ALPHA) out = "letters";
    else if (style & STR_ALPHANUM) out = "letters and digits";
    if (style & STR_UPPER) Append(out, "capitals");
    else if (style & STR_LOWER) Append(out, "small letters");
    else if (style & STR_FIRSTCHARUPPER) Append(out, "first letter capital");
    if (cls.view) {
        const FieldView v = cls.view(h);
        if (v.mask != nullptr && *v.mask) Append(out, std::string("pattern ") + v.mask);
    }
    return out;
}

std::string DateAccepts(HWND h) {
    static const char* const kOrders[] = {"", "", "MM DD YY", "MM DD YYYY", "DD MM YY", "DD MM YYYY", "YY MM DD", "YYYY MM DD"};
    const LRESULT format = SendMessageA(h, GXM_DATE_GETFORMAT, 0, 0);
    const unsigned order = HIWORD(format);
    const char separator = static_cast<char>(LOWORD(format));
    if (order < 2 || order > 7) return "date";
    std::string text = kOrders[order];
    if (separator != 0)
        for (char& c : text)
            if (c == ' ') c = separator;
    return "date " + text;
}

// What validation will ask of the value: "required" ("@MND"), "1 to 99"
// ("@RNG(1,99)"), "one of A, B" ("@CHC(A,B)").
std::string Demands(HWND h) {
    char method[kMethodMax + 1] = "";
    SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(method));
    MethodShort copy(method);
    std::string out;
    if (copy.has("@MND")) out = "required";
    std::string range = copy.param("@RNG");
    if (copy.found() && !range.empty()) {
        const size_t comma = range.find(',');
        if (comma != std::string::npos && range.find(',', comma + 1) == std::string::npos)
            range = range.substr(0, comma) + " to " + range.substr(comma + 1);
        Append(out, range);
    }
    std::string choice = copy.param("@CHC");
    if (copy.found() && !choice.empty()) {
        for (size_t at = choice.find(','); at != std::string::npos; at = choice.find(',', at + 2)) choice.replace(at, 1, ", ");
        Append(out, "one of " + choice);
    }
    return out;
}

std::string Description(HWND h, const void* owner) {
    const std::string cls = ClassName(h);
    std::string out;
    if (Is(cls, "gxString32")) out = StringAccepts(h, Field(owner));
    else if (Is(cls, "gxNumeric32")) out = "whole number";
    else if (Is(cls, "gxReal32")) out = "number";
    else if (Is(cls, "gxCurrency32")) out = "amount";
    else if (Is(cls, "gxDate32")) out = DateAccepts(h);
    Append(out, Demands(h));
    if (Field(owner).limit >= 0) {
        const auto limit = static_cast<WORD>(GetWindowWord(h, Field(owner).limit));
        if (limit > 0) {
            char text[48];
            std::snprintf(text, sizeof text, "at most %u characters", limit);
            Append(out, text);
        }
    }
    return out;
}

// The field's own words for a value it refuses ("@MSG"), heard before
// typing one.
std::string Help(HWND h, const void*) {
    char method[kMethodMax + 1] = "";
    SendMessageA(h, GXM_GETMETHOD, 256, reinterpret_cast<LPARAM>(method));
    MethodShort copy(method);
    return copy.param("@MSG");
}

bool PutValue(HWND h, const char* text) {
    if (!IsWindowEnabled(h)) return false;
    SendMessageA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    return true;
}

}  // namespace

std::string FieldShownText(HWND h, const void* owner) {
    const FieldClass& cls = Field(owner);
    if (cls.view) {
        const FieldView v = cls.view(h);
        if (v.text.s[0] == 0) return {};
        return Trimmed(FieldToScreen(v.text.s, v.mask, v.noFill, 0).s);
    }
    if (&cls.on == &kNumberHandlers) return Trimmed(ShownNumberText(h, static_cast<const NumberClass&>(cls)).s);
    return Trimmed(ReadFieldText(h).s);
}

bool MayChangeFieldText(UINT msg) {
    switch (msg) {
    case WM_CHAR:
    case WM_KEYDOWN:
    case WM_SETTEXT:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_VSCROLL:
    case WM_LBUTTONUP:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_REPLACESEL:
    case GXM_SETMETHOD:
    case GXM_SETVALUE:
    case GXM_DROPDATA:
    case GXM_MASK:
        return true;
    default:
        return IsDdeMessage(msg);
    }
}

const AccessClass kEntryFieldAccess{
    .role = ROLE_SYSTEM_TEXT,
    .value = FieldShownText,
    .description = Description,
    .help = Help,
    .putValue = PutValue,
};

}  // namespace fk
