// The OEM brand's store, which wants supplies addresses in a format of its own.
#pragma once

/// The store's accessories pages: a host name followed by a slash. A product whose base address, the setting
/// `IDO_TORVANEURL`, is exactly this text belongs to the store: CGUIUrlLink then composes its addresses in the store's
/// format, or opens the order information of the institution that owns the computer.
constexpr char OEM_ACCESSORIES_ADDRESS[] = "accessories.morvay.example/";
