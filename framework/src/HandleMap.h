// From handles to objects, for one thread: the permanent objects that a handle is attached to, and the temporary ones
// that stand for handles met on the way.
#pragma once

#include <map>
#include <typeindex>
#include <typeinfo>
#include <utility>

namespace framework
{
/// `member` is where an object keeps its handle.
template <class Handle, class Object, Handle Object::*member>
class HandleMap
{
public:
    HandleMap() = default;
    HandleMap(const HandleMap&) = delete;
    HandleMap& operator=(const HandleMap&) = delete;
    ~HandleMap() { DeleteTemporary(); }

    Object* Permanent(Handle handle) const
    {
        const auto found = m_permanent.find(handle);
        return found == m_permanent.end() ? nullptr : found->second;
    }

    void Set(Handle handle, Object* object) { m_permanent[handle] = object; }
    void Remove(Handle handle) { m_permanent.erase(handle); }

    /// The attached object when it is a `Wanted`, otherwise a temporary `Wanted`.
    template <class Wanted>
    Wanted* Find(Handle handle)
    {
        if (!handle)
            return nullptr;
        if (auto* permanent = dynamic_cast<Wanted*>(Permanent(handle)))
            return permanent;
        Object*& temporary = m_temporary[{handle, typeid(Wanted)}];
        if (!temporary)
            temporary = new Wanted;
        temporary->*member = handle;
        return static_cast<Wanted*>(temporary);
    }

    /// Drops the temporary objects, not their handles.
    void DeleteTemporary()
    {
        for (auto& [key, object] : std::exchange(m_temporary, {}))
        {
            if (object)
                object->*member = nullptr;
            delete object;
        }
    }

private:
    std::map<Handle, Object*> m_permanent;
    std::map<std::pair<Handle, std::type_index>, Object*> m_temporary;
};
} // namespace framework
