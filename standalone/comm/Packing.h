#pragma once

#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "Ranks.h"

namespace weldline {

// Several values in one message. They are taken out in the order in which they were put in.

class Packer {
  public:
    template <class Value>
    Packer& put(const Value& value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        append(&value, sizeof(Value));
        return *this;
    }
    template <class Value>
    Packer& put(const std::vector<Value>& values) {
        static_assert(std::is_trivially_copyable_v<Value>);
        put(values.size());
        append(values.data(), values.size() * sizeof(Value));
        return *this;
    }
    Packer& put(const std::string& text) {
        put(text.size());
        append(text.data(), text.size());
        return *this;
    }
    Packer& put(const std::vector<std::string>& texts) {
        put(texts.size());
        for (const std::string& text : texts) put(text);
        return *this;
    }

    Bytes take() { return std::move(m_bytes); }

  private:
    void append(const void* from, std::size_t size) {
        const auto* bytes = static_cast<const std::byte*>(from);
        m_bytes.insert(m_bytes.end(), bytes, bytes + size);
    }

    Bytes m_bytes;
};

class Unpacker {
  public:
    explicit Unpacker(const Bytes& bytes) : m_bytes(bytes) {}  // borrowed

    bool atEnd() const { return m_at == m_bytes.size(); }

    template <class Value>
    void get(Value& value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        copy(&value, sizeof(Value));
    }
    template <class Value>
    void get(std::vector<Value>& values) {
        static_assert(std::is_trivially_copyable_v<Value>);
        values.resize(get<std::size_t>());
        copy(values.data(), values.size() * sizeof(Value));
    }
    void get(std::string& text) {
        text.resize(get<std::size_t>());
        copy(text.data(), text.size());
    }
    void get(std::vector<std::string>& texts) {
        texts.resize(get<std::size_t>());
        for (std::string& text : texts) get(text);
    }
    template <class Value>
    Value get() {
        Value value{};
        get(value);
        return value;
    }

  private:
    void copy(void* to, std::size_t size) {
        if (size > 0) std::memcpy(to, m_bytes.data() + m_at, size);
        m_at += size;
    }

    const Bytes& m_bytes;
    std::size_t m_at = 0;
};

}  // namespace weldline
