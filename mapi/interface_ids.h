// The published identifiers of the interfaces that QueryInterface answers to.
#pragma once

#include <windows.h>

constexpr IID MapiInterfaceId(unsigned short number) {
    return {0x00020300U | number, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
}

inline constexpr IID unknownInterface = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID mapiTableInterface = MapiInterfaceId(0x01);
inline constexpr IID mapiPropInterface = MapiInterfaceId(0x03);
inline constexpr IID addrBookInterface = MapiInterfaceId(0x09);
inline constexpr IID mailUserInterface = MapiInterfaceId(0x0A);
inline constexpr IID mapiContainerInterface = MapiInterfaceId(0x0B);
inline constexpr IID abContainerInterface = MapiInterfaceId(0x0D);
inline constexpr IID distListInterface = MapiInterfaceId(0x0E);
