// What the library calls of the test host, and what it prints.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "TestHost.h"

namespace weldline::test {

CallLog& callLog() {
    static CallLog log;
    return log;
}

int TestHost::NParInterFace() {
    ++partitionCalls;
    return static_cast<int>(m_interface.size());
}
int* TestHost::ijParCV() {
    ++partitionCalls;
    return m_parCell;
}
int* TestHost::ijPar() {
    ++partitionCalls;
    return m_parHalo;
}
double* TestHost::ijParSx() {
    ++partitionCalls;
    return m_par[0];
}
double* TestHost::ijParSy() {
    ++partitionCalls;
    return m_par[1];
}
double* TestHost::ijParSz() {
    ++partitionCalls;
    return m_par[2];
}
double* TestHost::ijParxc() {
    ++partitionCalls;
    return m_par[3];
}
double* TestHost::ijParyc() {
    ++partitionCalls;
    return m_par[4];
}
double* TestHost::ijParzc() {
    ++partitionCalls;
    return m_par[5];
}
double* TestHost::ParInterFace_Lamda() {
    ++partitionCalls;
    return m_par[6];
}

void TestHost::DDM_Exch(double* cellArray) {
    callLog().push_back("DDM_Exch");
    exchanges.push_back({cellArray, {cellArray, cellArray + slots() + 1}});
    exchange(cellArray);
}

int TestHost::AllMax(int& value) {
    callLog().push_back("AllMax " + std::to_string(value));
    allMaxArguments.push_back(value);
    return allMax(value);
}

std::string standardOutputOf(const std::function<void()>& action) {
    std::FILE* file = std::tmpfile();
    if (file == nullptr) std::abort();
    std::fflush(stdout);
    const int saved = dup(1);
    dup2(fileno(file), 1);
    action();
    std::fflush(stdout);
    dup2(saved, 1);
    close(saved);
    std::rewind(file);
    std::string text;
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
        text.push_back(static_cast<char>(c));
    std::fclose(file);
    return text;
}

}  // namespace weldline::test
