// The links of the job status window: every kind of page that the library knows.
#pragma once

#include <array>

struct LinkKind
{
    const char* kind;      ///< what the demo's command line calls it
    const char* caption;   ///< what the window calls it
    const char* subUrlKey; ///< the setting that names the link
};

inline constexpr std::array<LinkKind, 15> LinkKinds = {{
    {"home", "Home page", "IDO_HOMEPAGE_SUBURL"},
    {"supplies", "Supplies", "IDO_SUPPLIES_SUBURL"},
    {"offers", "Special offers", "IDO_SPECIALOFFER_SUBURL"},
    {"support", "Support", "IDO_SUPPORT_SUBURL"},
    {"software", "Downloads", "IDO_SOFTWARE_SUBURL"},
    {"registration", "Registration", "IDO_REGISTRATION_SUBURL"},
    {"contact", "Contact us", "IDO_MORECONTACT_SUBURL"},
    {"rewards", "Rewards", "IDO_REWARD_SUBURL"},
    {"skins", "More skins", "IDO_SKIN_SUBURL"},
    {"resellers", "Resellers", "IDO_RESELLER_SUBURL"},
    {"technician", "Technicians", "IDO_CONTACTTECH_SUBURL"},
    {"privacy", "Privacy", "IDO_PRIVACY_SUBURL"},
    {"business", "For business", "IDO_TORVANESMB_SUBURL"},
    {"tutorial", "Tutorials", "IDO_WEBTUTORIAL_SUBURL"},
    {"genuine", "Genuine ink", "IDO_GENUINE_SUBURL"},
}};
inline constexpr int SuppliesLink = 1; ///< its index
