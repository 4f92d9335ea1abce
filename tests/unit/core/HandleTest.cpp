#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "BoxMesh.h"
#include "CKVR3DWeldLine.h"
#include "CKVR3D_WeldLine_Manipulator.h"
#include "TestHost.h"

namespace weldline::test {

namespace {

using Handle = CKVR3D_WeldLine_Manipulator;

// The handle as the host's linker sees it: table address, calculator, five reserved words.
using Words = std::array<std::uintptr_t, 7>;
static_assert(sizeof(Handle) == sizeof(Words));

Words wordsOf(const Handle& handle) {
    Words words;
    std::memcpy(words.data(), static_cast<const void*>(&handle), sizeof words);
    return words;
}

CKVR3DWeldLine& calculatorOf(const Handle& handle) {
    return *reinterpret_cast<CKVR3DWeldLine*>(wordsOf(handle)[1]);
}

// Memory for a handle that is never destroyed, as all copies but one must be.
class CopySpace {
  public:
    void* memory() { return m_bytes; }

  private:
    alignas(Handle) unsigned char m_bytes[sizeof(Handle)] = {};
};

// Fills the reserved words, which no method writes, so that a copy can be told from a fresh handle.
void fillReservedWords(Handle& handle) {
    Words words = wordsOf(handle);
    for (std::size_t i = 2; i < words.size(); ++i) words[i] = 1000 + i;
    std::memcpy(static_cast<void*>(&handle), words.data(), sizeof words);
}

// An object address that is stored and compared, never followed.
template <class Object>
Object* addressOnly(std::uintptr_t value) {
    return reinterpret_cast<Object*>(value);
}

// A list setter of the handle with the field that it fills.
template <class List>
struct ListSetter {
    bool (Handle::*set)(List);
    List CKVR3DWeldLine::*field;
};

const ListSetter<int**> rowSetters[] = {
    {&Handle::setCavityNodeConn, &CKVR3DWeldLine::m_pCavityNodeConn},
    {&Handle::setWallFace20, &CKVR3DWeldLine::m_pWallFace20},
    {&Handle::setInletFace20, &CKVR3DWeldLine::m_pInletFace20},
    {&Handle::setOutletFace20, &CKVR3DWeldLine::m_pOutletFace20},
    {&Handle::setSymmFace20, &CKVR3DWeldLine::m_pSymmFace20},
    {&Handle::setMapCTG2ZNL, &CKVR3DWeldLine::m_pMapCTG2ZNL}};

}  // namespace

TEST(Handle, methods_have_the_signatures_that_hosts_link_against) {
    static_assert(std::has_virtual_destructor_v<Handle>);
    static_assert(std::is_same_v<decltype(&Handle::setFlowData),
                                 bool (Handle::*)(CKvr3dGV*, CKVR3DFiniteVolumeMesh*)>);
    static_assert(std::is_same_v<decltype(&Handle::setPartitionInterface),
                                 bool (Handle::*)(CPartitionFace_DLL*)>);
    static_assert(
        std::is_same_v<decltype(&Handle::setKVRCom), bool (Handle::*)(CCommunication*, CKVRCom*)>);
    static_assert(std::is_same_v<decltype(&Handle::setMeshFileType), bool (Handle::*)(int)>);
    static_assert(std::is_same_v<decltype(&Handle::setCavityGlobalNode), bool (Handle::*)(int*)>);
    static_assert(std::is_same_v<decltype(&Handle::setBiIMFlowData), bool (Handle::*)(float*)>);
    static_assert(std::is_same_v<decltype(&Handle::calWeldLine), int (Handle::*)()>);
    static_assert(std::is_same_v<decltype(&Handle::getMeetingAngle), double* (Handle::*)()>);
    static_assert(
        std::is_same_v<decltype(std::declval<Handle&>() = std::declval<const Handle&>()), Handle&>);
}

TEST(Handle, starts_with_a_calculator_and_reserved_words_of_zero) {
    const Handle handle;
    const Words words = wordsOf(handle);
    EXPECT_NE(words[1], 0U);
    for (std::size_t i = 2; i < words.size(); ++i) EXPECT_EQ(words[i], 0U) << "word " << i;
}

TEST(Handle, copy_refers_to_the_same_calculator_and_copies_the_reserved_words) {
    Handle source;
    fillReservedWords(source);
    CopySpace space;
    const Handle* copy = new (space.memory()) Handle(source);
    EXPECT_EQ(wordsOf(*copy), wordsOf(source));
}

TEST(Handle, assignment_refers_to_the_same_calculator_and_answers_its_target) {
    Handle first;
    Handle second;
    fillReservedWords(second);
    CopySpace space;
    Handle* target = new (space.memory()) Handle(first);
    EXPECT_EQ(&(*target = second), target);
    EXPECT_EQ(wordsOf(*target), wordsOf(second));
    EXPECT_NE(wordsOf(first)[1], wordsOf(second)[1]);
}

TEST(Handle, destroying_one_of_a_set_of_copies_destroys_the_calculator_once) {
    resetRbfObjects();
    auto source = std::make_unique<Handle>();
    CopySpace first;
    CopySpace second;
    new (first.memory()) Handle(*source);
    new (second.memory()) Handle(*source);
    callLog().clear();
    source.reset();
    EXPECT_EQ(callLog().size(), 5U);
}

TEST(Handle, a_copy_may_be_the_one_that_is_destroyed) {
    resetRbfObjects();
    CopySpace space;
    Handle* source = new (space.memory()) Handle;
    callLog().clear();
    { const Handle copy(*source); }
    EXPECT_EQ(callLog().size(), 5U);
}

TEST(Handle, copy_works_on_the_calculator_of_its_source) {
    TestHost host;
    addBox(host, 2, 2, 2, 1.0);
    host.finish();
    Handle source;
    CopySpace space;
    Handle* copy = new (space.memory()) Handle(source);
    EXPECT_TRUE(copy->setFlowData(host.gv(), host.mesh()));
    EXPECT_NE(source.getMeetingAngle(), nullptr);
    EXPECT_EQ(source.getMeetingAngle(), copy->getMeetingAngle());
}

TEST(Handle, a_throwing_rbf_object_passes_through_the_constructor) {
    resetRbfObjects(2);
    EXPECT_THROW(std::make_unique<Handle>(), std::runtime_error);
    resetRbfObjects();
}

TEST(Handle, meeting_angle_is_null_before_the_first_binding) {
    Handle handle;
    EXPECT_EQ(handle.getMeetingAngle(), nullptr);
}

TEST(Handle, meeting_angles_are_zero_after_binding) {
    TestHost host;
    addBox(host, 2, 1, 1, 1.0);
    host.finish();
    Handle handle;
    EXPECT_TRUE(handle.setFlowData(host.gv(), host.mesh()));
    const double* angle = handle.getMeetingAngle();
    for (int n = 0; n <= 12; ++n) EXPECT_EQ(angle[n], 0.0) << "node " << n;
    EXPECT_EQ(calculatorOf(handle).m_pMeetingAngle, angle);
}

TEST(Handle, list_setters_store_their_list) {
    Handle handle;
    const CKVR3DWeldLine& record = calculatorOf(handle);
    std::uintptr_t address = 0x1000;
    for (const ListSetter<int**>& setter : rowSetters) {
        int** list = addressOnly<int*>(address += 0x1000);
        EXPECT_TRUE((handle.*setter.set)(list));
        EXPECT_EQ(record.*setter.field, list);
    }
    int nodes[] = {0, 5};
    EXPECT_TRUE(handle.setCavityGlobalNode(nodes));
    EXPECT_EQ(record.m_pCavityGlobalNode, nodes);
    // None of the later calls touched an earlier field.
    address = 0x1000;
    for (const ListSetter<int**>& setter : rowSetters)
        EXPECT_EQ(record.*setter.field, addressOnly<int*>(address += 0x1000));
}

TEST(Handle, list_setters_refuse_null_and_keep_the_earlier_list) {
    Handle handle;
    const CKVR3DWeldLine& record = calculatorOf(handle);
    int** list = addressOnly<int*>(0x1000);
    for (const ListSetter<int**>& setter : rowSetters) {
        EXPECT_FALSE((handle.*setter.set)(nullptr));
        EXPECT_EQ(record.*setter.field, nullptr);
        EXPECT_TRUE((handle.*setter.set)(list));
        EXPECT_FALSE((handle.*setter.set)(nullptr));
        EXPECT_EQ(record.*setter.field, list);
    }
    int nodes[] = {0, 5};
    EXPECT_TRUE(handle.setCavityGlobalNode(nodes));
    EXPECT_FALSE(handle.setCavityGlobalNode(nullptr));
    EXPECT_EQ(record.m_pCavityGlobalNode, nodes);
}

TEST(Handle, object_setters_store_null_as_well) {
    Handle handle;
    TestHost host;
    const CKVR3DWeldLine& record = calculatorOf(handle);
    float values[] = {0.0F, 1.0F};
    EXPECT_TRUE(handle.setPartitionInterface(host.partition()));
    EXPECT_TRUE(handle.setKVRCom(host.communication(), host.collective()));
    EXPECT_TRUE(handle.setBiIMFlowData(values));
    EXPECT_EQ(record.m_pPartitionFace, host.partition());
    EXPECT_EQ(record.m_pCommunication, host.communication());
    EXPECT_EQ(record.m_pKVRCom, host.collective());
    EXPECT_EQ(record.m_pBiIMFlowData, values);

    EXPECT_TRUE(handle.setPartitionInterface(nullptr));
    EXPECT_TRUE(handle.setKVRCom(nullptr, host.collective()));
    EXPECT_TRUE(handle.setBiIMFlowData(nullptr));
    EXPECT_EQ(record.m_pPartitionFace, nullptr);
    EXPECT_EQ(record.m_pCommunication, nullptr);
    EXPECT_EQ(record.m_pKVRCom, host.collective());
    EXPECT_EQ(record.m_pBiIMFlowData, nullptr);
    EXPECT_TRUE(handle.setKVRCom(host.communication(), nullptr));
    EXPECT_EQ(record.m_pCommunication, host.communication());
    EXPECT_EQ(record.m_pKVRCom, nullptr);
}

TEST(Handle, mesh_file_type_is_stored_whatever_it_is) {
    Handle handle;
    for (int type : {2, 0, -1, 99}) {
        EXPECT_TRUE(handle.setMeshFileType(type));
        EXPECT_EQ(calculatorOf(handle).m_MeshFileType, type);
    }
}

}  // namespace weldline::test
