// Owners of COM references and BSTRs: every reference the accessible
// objects take is given back on every path.
#pragma once

#include <windows.h>
#include <oleauto.h>

namespace fk {

// One counted reference to a COM interface.
template <typename T>
class ComRef {
public:
    ComRef() = default;
    explicit ComRef(T* p) : p_(p) {}  // takes over a reference the caller holds
    ~ComRef() { reset(); }
    ComRef(const ComRef&) = delete;
    ComRef& operator=(const ComRef&) = delete;
    ComRef(ComRef&& o) noexcept : p_(o.p_) { o.p_ = nullptr; }
    ComRef& operator=(ComRef&& o) noexcept {
        if (this != &o) {
            reset();
            p_ = o.p_;
            o.p_ = nullptr;
        }
        return *this;
    }
    void reset() {
        if (p_) p_->Release();
        p_ = nullptr;
    }
    // For functions that hand out a new reference through T**.
    T** put() {
        reset();
        return &p_;
    }
    void** putVoid() { return reinterpret_cast<void**>(put()); }
    // Hands the reference over to the caller.
    T* release() {
        T* p = p_;
        p_ = nullptr;
        return p;
    }
    T* get() const { return p_; }
    T* operator->() const { return p_; }
    explicit operator bool() const { return p_ != nullptr; }

private:
    T* p_ = nullptr;
};

// A BSTR that is freed unless handed over.
class Bstr {
public:
    Bstr() = default;
    explicit Bstr(BSTR s) : s_(s) {}
    ~Bstr() { SysFreeString(s_); }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    BSTR* put() {
        SysFreeString(s_);
        s_ = nullptr;
        return &s_;
    }
    BSTR get() const { return s_; }
    BSTR release() {
        BSTR s = s_;
        s_ = nullptr;
        return s;
    }

private:
    BSTR s_ = nullptr;
};

// A VARIANT cleared when it goes.
class Variant {
public:
    Variant() { VariantInit(&v_); }
    ~Variant() { VariantClear(&v_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    VARIANT* put() {
        VariantClear(&v_);
        return &v_;
    }
    const VARIANT& get() const { return v_; }

private:
    VARIANT v_;
};

}  // namespace fk
