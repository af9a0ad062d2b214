#include "platform/VelmoDspTrash.h"

#include <CoreFoundation/CoreFoundation.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <cstring>

extern "C" {
void* objc_autoreleasePoolPush();
void objc_autoreleasePoolPop(void* pool);
}

namespace velmodsp {
namespace {

/// Holds the temporary objects that the file manager leaves behind.
class AutoreleasePool {
public:
    AutoreleasePool() : pool(objc_autoreleasePoolPush()) {}
    ~AutoreleasePool() { objc_autoreleasePoolPop(pool); }
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;

private:
    void* pool;
};

/// [[NSFileManager defaultManager] trashItemAtURL:url resultingItemURL:nil error:nil], sent through the Objective-C
/// runtime so that the library stays plain C++. A CFURL is an NSURL.
bool TrashItemAtUrl(CFURLRef url) {
    using GetManager = id (*)(Class, SEL);
    using TrashItem = signed char (*)(id, SEL, CFURLRef, void*, void*);
    const Class managerClass = objc_getClass("NSFileManager");
    if (managerClass == nullptr) return false;
    const auto getManager = reinterpret_cast<GetManager>(objc_msgSend);
    const auto trashItem = reinterpret_cast<TrashItem>(objc_msgSend);
    const id manager = getManager(managerClass, sel_registerName("defaultManager"));
    return trashItem(manager, sel_registerName("trashItemAtURL:resultingItemURL:error:"), url, nullptr, nullptr) != 0;
}

}  // namespace

bool MoveToTrash(const String& path) {
    const AutoreleasePool pool;
    const auto* bytes = reinterpret_cast<const UInt8*>(path.C_Str());
    const CFURLRef url = CFURLCreateFromFileSystemRepresentation(
        kCFAllocatorDefault, bytes, static_cast<CFIndex>(std::strlen(path.C_Str())), false);
    if (url == nullptr) return false;
    const bool isInTrash = TrashItemAtUrl(url);
    CFRelease(url);
    return isInTrash;
}

}  // namespace velmodsp
