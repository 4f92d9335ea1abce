#include "Trace.h"

#include <cstdio>

#include "CKVR3DWeldLine.h"
#include "CKvr3dGV.h"

namespace weldline::core {

bool isMaster(const CKVR3DWeldLine& record) {
    const CKvr3dGV* host = record.m_pGV;
    return host == nullptr || host->m_pProcessNumber == nullptr || *host->m_pProcessNumber == 0;
}

bool isTracing(const CKVR3DWeldLine& record) {
    return record.m_FlagDebugOutput && record.m_pDebugFile != nullptr && isMaster(record);
}

void trace(const CKVR3DWeldLine& record, const char* text) {
    if (isTracing(record)) std::fputs(text, record.m_pDebugFile);
}

void traceSetter(const CKVR3DWeldLine& record, const char* text) {
    if (record.m_FlagDebugOutput && record.m_pDebugFile != nullptr) {
        std::fputs(text, record.m_pDebugFile);
    }
}

}  // namespace weldline::core
