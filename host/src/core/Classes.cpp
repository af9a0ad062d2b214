#include "core/Classes.h"

#include <algorithm>
#include <cstdarg>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "core/ClassRecord.h"
#include "core/OutOfMemory.h"
#include "window/MaxWindow.h"

// The last named parameter of class_new is a short by the API's definition; every compiler the host is built with reads
// the arguments behind it as it should.
#pragma GCC diagnostic ignored "-Wvarargs"

namespace velmohost {
namespace {

using Registry = std::map<std::pair<t_symbol*, t_symbol*>, t_class*>;

/// Never destroyed: objects that are freed at the program's end still look up classes.
Registry& Classes() {
    static Registry& registry = *new Registry;
    return registry;
}

bool SetTypes(t_messlist& message, const std::vector<int>& types) {
    if (types.size() > MSG_MAXARG) return false;
    std::fill(std::begin(message.m_type), std::end(message.m_type), '\0');
    std::transform(types.begin(), types.end(), message.m_type, [](int type) { return static_cast<char>(type); });
    return true;
}

/// The rest of a type list, up to its 0.
std::vector<int> ReadTypes(int first, std::va_list arguments) {
    std::vector<int> types;
    for (int type = first; type != A_NOTHING; type = va_arg(arguments, int)) types.push_back(type);
    return types;
}

/// Room for one more message and the end mark. The entry before the first holds the class, where objects find it.
void ReserveMessage(ClassRecord& record) {
    if (record.c.c_messcount < record.messageCapacity) return;
    const long capacity = std::max(16L, 2 * record.messageCapacity);
    auto list = std::make_unique<t_messlist[]>(static_cast<std::size_t>(capacity) + 2);
    list[0].m_sym = reinterpret_cast<t_symbol*>(&record.c);
    std::copy_n(record.c.c_messlist, record.c.c_messcount, &list[1]);
    record.messageLists.push_back(std::move(list));
    record.c.c_messlist = &record.messageLists.back()[1];
    record.messageCapacity = capacity;
}

t_max_err RegisterName(t_class* c, t_symbol* nameSpace, t_symbol* name) {
    const bool isNew = Classes().emplace(std::pair(nameSpace, name), c).second;
    if (isNew) return MAX_ERR_NONE;
    PostRow(RowKind::Error, name->s_name, "a class of this name is registered already");
    return MAX_ERR_DUPLICATE;
}

}  // namespace

const t_messlist* FindMessage(const t_class* c, const t_symbol* selector) {
    const t_messlist* const begin = c->c_messlist;
    const t_messlist* const end = begin + c->c_messcount;
    const t_messlist* const found =
        std::find_if(begin, end, [selector](const t_messlist& m) { return m.m_sym == selector; });
    return found != end ? found : nullptr;
}

const t_messlist* FindMessage(t_object* x, const t_symbol* selector) {
    return NOGOOD(x) ? nullptr : FindMessage(ob_class(x), selector);
}

t_class* FindClass(t_symbol* nameSpace, t_symbol* name) {
    RegisterHostClasses();
    const auto found = Classes().find({nameSpace, name});
    return found != Classes().end() ? found->second : nullptr;
}

t_class* FindClass(const std::string& nameSpace, const std::string& name) {
    return FindClass(gensym(nameSpace.c_str()), gensym(name.c_str()));
}

std::vector<MessageInfo> GetMessages(t_class* c) {
    std::vector<MessageInfo> messages;
    if (c == nullptr) return messages;
    for (const t_messlist* m = c->c_messlist; m != c->c_messlist + c->c_messcount; ++m) {
        messages.push_back(
            {m->m_sym->s_name, {m->m_type, std::find(std::begin(m->m_type), std::end(m->m_type), '\0')}});
    }
    return messages;
}

std::vector<t_object*> GetClassAttributes(t_class* c) {
    return c != nullptr ? RecordOf(c).attributes : std::vector<t_object*>{};
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_class* class_new(const char* name, const method mnew, const method mfree, long size, const method, short type,
                   ...) try {
    std::va_list arguments;
    va_start(arguments, type);
    const std::vector<int> types = ReadTypes(type, arguments);
    va_end(arguments);

    auto record = std::make_unique<ClassRecord>();
    const bool holdsHeader = size >= static_cast<long>(sizeof(t_object));
    if (name == nullptr || !holdsHeader || !SetTypes(record->constructor, types)) {
        PostRow(RowKind::Error, name, "class_new: bad name, size or number of arguments");
        return nullptr;
    }
    t_class& c = record->c;
    c.c_sym = gensym(name);
    c.c_freefun = mfree;
    c.c_size = static_cast<t_getbytes_size>(size);
    c.c_filename = c.c_sym;
    record->constructor.m_sym = c.c_sym;
    record->constructor.m_fun = mnew;
    c.c_newmess = &record->constructor;
    ReserveMessage(*record);
    return &record.release()->c;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err class_free(t_class* c) {
    if (c == nullptr) return MAX_ERR_INVALID_PTR;
    std::erase_if(Classes(), [c](const auto& entry) { return entry.second == c; });
    for (t_object* attribute : RecordOf(c).attributes) object_free(attribute);
    delete &RecordOf(c);
    return MAX_ERR_NONE;
}

t_max_err class_register(t_symbol* name_space, t_class* c) try {
    if (name_space == nullptr || c == nullptr) return MAX_ERR_INVALID_PTR;
    if ((c->c_flags & CLASS_FLAG_REGISTERED) != 0) return MAX_ERR_DUPLICATE;
    const t_max_err result = RegisterName(c, name_space, c->c_sym);
    if (result != MAX_ERR_NONE) return result;
    RecordOf(c).nameSpace = name_space;
    c->c_flags |= CLASS_FLAG_REGISTERED;
    if (name_space == CLASS_BOX) c->c_flags |= CLASS_FLAG_BOX;
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err class_alias(t_class* c, t_symbol* aliasname) try {
    if (c == nullptr || aliasname == nullptr) return MAX_ERR_INVALID_PTR;
    t_symbol* const nameSpace = RecordOf(c).nameSpace;
    return RegisterName(c, nameSpace != nullptr ? nameSpace : CLASS_BOX, aliasname);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err class_addmethod(t_class* c, const method m, const char* name, ...) try {
    if (c == nullptr || m == nullptr || name == nullptr) return MAX_ERR_INVALID_PTR;
    std::va_list arguments;
    va_start(arguments, name);
    const int first = va_arg(arguments, int);  // on its own: reading moves on the list that is handed over next
    const std::vector<int> types = ReadTypes(first, arguments);
    va_end(arguments);

    t_messlist message{gensym(name), m, {}};
    if (!SetTypes(message, types)) return MAX_ERR_GENERIC;
    if (const t_messlist* const earlier = FindMessage(c, message.m_sym)) {
        c->c_messlist[earlier - c->c_messlist] = message;
        return MAX_ERR_NONE;
    }
    ReserveMessage(RecordOf(c));
    c->c_messlist[c->c_messcount++] = message;
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_symbol* class_nameget(t_class* c) { return c != nullptr ? c->c_sym : nullptr; }

t_symbol* class_namespace(t_class* c) { return c != nullptr ? RecordOf(c).nameSpace : nullptr; }

t_class* class_findbyname(t_symbol* name_space, t_symbol* classname) try {
    return FindClass(name_space, classname);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

// "get<attribute>" answers through the dump outlet in every class.
t_max_err class_dumpout_wrap(t_class* c) { return c != nullptr ? MAX_ERR_NONE : MAX_ERR_INVALID_PTR; }

method class_method(t_class* x, t_symbol* methodname) {
    const t_messlist* const message = x != nullptr ? FindMessage(x, methodname) : nullptr;
    return message != nullptr ? message->m_fun : nullptr;
}

void class_obexoffset_set(t_class* c, long offset) {
    if (c != nullptr) c->c_obexoffset = offset;
}

long class_obexoffset_get(t_class* c) { return c != nullptr ? c->c_obexoffset : 0; }

long class_is_ui(t_class* c) { return c != nullptr && (c->c_flags & CLASS_FLAG_UIOBJECT) != 0; }

long class_is_box(t_class* c) { return c != nullptr && (c->c_flags & CLASS_FLAG_BOX) != 0; }

t_max_err class_extra_store(t_class* x, t_symbol* s, t_object* o) try {
    if (x == nullptr || s == nullptr) return MAX_ERR_INVALID_PTR;
    RecordOf(x).extras[s] = o;
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void* class_extra_lookup(t_class* x, t_symbol* s) {
    if (x == nullptr) return nullptr;
    const auto found = RecordOf(x).extras.find(s);
    return found != RecordOf(x).extras.end() ? found->second : nullptr;
}

}  // extern "C"
