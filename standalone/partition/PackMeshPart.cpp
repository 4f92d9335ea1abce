#include "PackMeshPart.h"

#include <cstring>
#include <type_traits>

namespace weldline {

namespace {

// Lists one after the other, each behind its length.
class Writer {
  public:
    template <class List>
    void list(const List& values) {
        using Value = typename List::value_type;
        static_assert(std::is_trivially_copyable_v<Value>);
        number(values.size());
        append(values.data(), values.size() * sizeof(Value));
    }
    void number(std::size_t value) { append(&value, sizeof value); }
    Bytes take() { return std::move(m_bytes); }

  private:
    void append(const void* data, std::size_t size) {
        const auto* bytes = static_cast<const std::byte*>(data);
        m_bytes.insert(m_bytes.end(), bytes, bytes + size);
    }
    Bytes m_bytes;
};

class Reader {
  public:
    explicit Reader(const Bytes& bytes) : m_bytes(bytes) {}
    template <class List>
    void list(List& values) {
        values.resize(number());
        copy(values.data(), values.size() * sizeof(typename List::value_type));
    }
    std::size_t number() {
        std::size_t value = 0;
        copy(&value, sizeof value);
        return value;
    }

  private:
    void copy(void* to, std::size_t size) {
        if (size > 0) std::memcpy(to, m_bytes.data() + m_next, size);
        m_next += size;
    }
    const Bytes& m_bytes;
    std::size_t m_next = 0;
};

// What a part consists of, once for both directions.
template <class Stream, class Part>
void passPart(Stream& stream, Part& part) {
    const auto rows = [&](auto& table) {
        stream.list(table.offsets);
        stream.list(table.entries);
    };
    stream.list(part.mesh.points);
    stream.list(part.mesh.kinds);
    rows(part.mesh.cellNodes);
    rows(part.mesh.polygons);
    rows(part.mesh.cellPolygons);
    stream.list(part.mesh.fileNumbers);
    stream.list(part.cellNumber);
    stream.list(part.nodeNumber);
    for (auto& patch : part.patches) {
        stream.list(patch.name);
        rows(patch.faces);
    }
    for (auto& field : part.cellFields) stream.list(field);
}

}  // namespace

Bytes packMeshPart(const MeshPart& part) {
    Writer writer;
    writer.number(part.patches.size());
    writer.number(part.cellFields.size());
    passPart(writer, part);
    return writer.take();
}

MeshPart unpackMeshPart(const Bytes& message) {
    Reader reader(message);
    MeshPart part;
    part.patches.resize(reader.number());
    part.cellFields.resize(reader.number());
    passPart(reader, part);
    return part;
}

}  // namespace weldline
