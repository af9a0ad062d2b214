// A plug-in that does on the audio thread what no plug-in may do there: "unsafe~ lock" locks, and so on. It is what
// shows that the checks of real-time safety find something.

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <thread>

#include "ext.h"
#include "ext_obex.h"
#include "z_dsp.h"

namespace {

struct Unsafe {
    t_pxobject ob;
    void (*act)();
};

t_class* unsafeClass;
void* volatile memory = std::malloc(1);  // volatile, lest the compiler leave a call out
std::mutex mutex;
void* const freshPage = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);

void Nothing() {}
void Allocate() { memory = std::malloc(1); }
void Free() { std::free(memory); }
void Lock() { const std::lock_guard lock(mutex); }
void Open() { close(open("/dev/null", O_RDONLY)); }
void Print() { std::puts("printed"); }
void Sleep() { std::this_thread::sleep_for(std::chrono::microseconds(1)); }

void Throw() {
    try {
        throw 1;
    } catch (int) {
    }
}

// Calls of the system for which the C library has no function that anybody watches over.
void Write() {
    if (write(STDERR_FILENO, "", 0) != 0) std::abort();
}
void Yield() { std::this_thread::yield(); }

// What no check ends the program for: memory that is touched for the first time.
void TouchPage() { static_cast<volatile char*>(freshPage)[0] = 0; }

// Harmless: a row for the Max window, and less of the stack than a host has ready.
void Post() { object_error(nullptr, "%s", "posted"); }
void UseStack() {
    std::array<volatile char, 48 * 1024> room;
    for (std::size_t i = 0; i < room.size(); i += 1024) room[i] = 0;
}

struct Deed {
    const char* name;
    void (*act)();
};
constexpr Deed deeds[] = {{"nothing", Nothing}, {"post", Post},   {"allocate", Allocate}, {"free", Free},
                          {"lock", Lock},       {"open", Open},   {"print", Print},       {"sleep", Sleep},
                          {"throw", Throw},     {"write", Write}, {"yield", Yield},       {"page", TouchPage},
                          {"stack", UseStack}};

Unsafe* New(t_symbol* name) {
    for (const Deed& deed : deeds) {
        if (std::strcmp(deed.name, name->s_name) != 0) continue;
        auto* const x = static_cast<Unsafe*>(object_alloc(unsafeClass));
        x->act = deed.act;
        z_dsp_setup(&x->ob, 1);
        outlet_new(x, "signal");
        return x;
    }
    return nullptr;
}

void Perform(Unsafe* x, t_object*, double**, long, double**, long, long, long, void*) { x->act(); }

void Dsp(Unsafe* x, t_object* dsp64, short*, double, long, long) {
    object_method(dsp64, gensym("dsp_add64"), x, Perform, 0, nullptr);
}

}  // namespace

extern "C" C74_EXPORT void ext_main(void*) {
    unsafeClass = class_new("unsafe~", reinterpret_cast<method>(New), reinterpret_cast<method>(z_dsp_free),
                            static_cast<long>(sizeof(Unsafe)), nullptr, A_SYM, 0);
    class_addmethod(unsafeClass, reinterpret_cast<method>(Dsp), "dsp64", A_CANT, 0);
    class_dspinit(unsafeClass);
    class_register(CLASS_BOX, unsafeClass);
}
