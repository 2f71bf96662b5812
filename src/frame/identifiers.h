// Identifiers of the component's interfaces and of the services of its sibling libraries. The values never change.
#pragma once

#include <stdint.h>

// The system headers define the same record under the same guard; the first definition is used.
#ifndef GUID_DEFINED
#define GUID_DEFINED
typedef struct _GUID { // NOLINT(bugprone-reserved-identifier): the tag that the platform's headers use
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
} GUID;
#endif

static_assert(sizeof(GUID) == 16, "an identifier is 16 bytes");

// {7219CBFF-058B-4ACE-B29D-090214DB480C}: IMordRev, accepted by CreateZelkObject and QueryInterface.
constexpr GUID IID_IMordRev = {0x7219CBFF, 0x058B, 0x4ACE, {0xB2, 0x9D, 0x09, 0x02, 0x14, 0xDB, 0x48, 0x0C}};

// {6DADA238-8BD1-4DE4-A224-7D27539DA995}: the same IMordRev, accepted by QueryInterface only.
constexpr GUID IID_IMordRevSecond = {0x6DADA238, 0x8BD1, 0x4DE4, {0xA2, 0x24, 0x7D, 0x27, 0x53, 0x9D, 0xA9, 0x95}};

// Services of ZelkBase.dll, from its own factory.

// {62C4D866-AC50-4A39-B2EC-CA50E5AC94CD}: IModuleFinder.
constexpr GUID SID_ModuleFinder = {0x62C4D866, 0xAC50, 0x4A39, {0xB2, 0xEC, 0xCA, 0x50, 0xE5, 0xAC, 0x94, 0xCD}};

// {AA40D0F0-0DF8-4E97-B142-9DEF8DA7EEF6}: ITextConverter.
constexpr GUID SID_TextConverter = {0xAA40D0F0, 0x0DF8, 0x4E97, {0xB1, 0x42, 0x9D, 0xEF, 0x8D, 0xA7, 0xEE, 0xF6}};

// Three services that the component holds and releases but never calls.
// {52203844-735C-447B-ACBC-73456337672C}
constexpr GUID SID_BaseServiceOne = {0x52203844, 0x735C, 0x447B, {0xAC, 0xBC, 0x73, 0x45, 0x63, 0x37, 0x67, 0x2C}};
// {DCBDC082-7349-4FB8-8850-3504CB477C72}
constexpr GUID SID_BaseServiceTwo = {0xDCBDC082, 0x7349, 0x4FB8, {0x88, 0x50, 0x35, 0x04, 0xCB, 0x47, 0x7C, 0x72}};
// {FC588690-8589-4EDA-BBB4-2E41964CB580}
constexpr GUID SID_BaseServiceThree = {0xFC588690, 0x8589, 0x4EDA, {0xBB, 0xB4, 0x2E, 0x41, 0x96, 0x4C, 0xB5, 0x80}};

// Service of Ferrocore.dll, held but never called: {427FB576-CFB6-4786-940D-E1D00E5521BA}
constexpr GUID SID_FerrocoreService = {0x427FB576, 0xCFB6, 0x4786, {0x94, 0x0D, 0xE1, 0xD0, 0x0E, 0x55, 0x21, 0xBA}};

// Services of the module with the key "module.base", from the factory of the module that IModuleFinder returns.

// {F81DEF0B-B738-4D44-A02E-CC0E7C59D3AA}: IMachineIdService.
constexpr GUID SID_MachineId = {0xF81DEF0B, 0xB738, 0x4D44, {0xA0, 0x2E, 0xCC, 0x0E, 0x7C, 0x59, 0xD3, 0xAA}};

// {BE29AE26-D1F3-4E58-843D-5D0A485DFE24}: ILogConfig.
constexpr GUID SID_LogConfig = {0xBE29AE26, 0xD1F3, 0x4E58, {0x84, 0x3D, 0x5D, 0x0A, 0x48, 0x5D, 0xFE, 0x24}};

// {68F7E655-0361-40B6-8846-F140043AA417}: ILogWriter.
constexpr GUID SID_LogWriter = {0x68F7E655, 0x0361, 0x40B6, {0x88, 0x46, 0xF1, 0x40, 0x04, 0x3A, 0xA4, 0x17}};
