#include "core/vocabulary/nxFunctionEnum.h"

#include <string_view>
#include <vector>

// What the words of the catalogue of functions can tell of themselves.

namespace
{
constexpr std::string_view tokenPrefix = "NX_FUNCTION_";
} // namespace

void nxFunctionEnum::GetAllRegisteredFunctionPermissions(std::set<nxFunctionEnum>& functions) const
{
    std::vector<nxEnumValue> values;
    GetRegisteredEnumValuesForInstance(values);
    functions.clear();
    for (nxEnumValue const value : values)
        functions.insert(functions.end(), nxFunctionEnum(value));
}

bool nxFunctionEnum::IsPermissionAutomaticallyGrantedToSuperUsers() const
{
    switch (_value)
    {
    // Users
    case NX_FUNCTION_REQUIRES_2FA_AUTHENTICATE:
    case NX_FUNCTION_REQUIRES_2FA_AUTHENTICATE_WITH_SSL:
    case NX_FUNCTION_PULL_ORDERS_WHEN_USER_DISABLED:
    case NX_FUNCTION_TRADING_DISABLED:
    // Products
    case NX_FUNCTION_USE_GROUP_NAME_FOR_SYNTHETIC_SPREAD_PRODUCTS:
    case NX_FUNCTION_USE_GROUP_NAME_FOR_SYNTHETIC_SPREAD_SPECS:
    // Orders
    case NX_FUNCTION_PREVENT_EUA_DEA_ORDERS:
    case NX_FUNCTION_ENFORCE_EUA_NON_DEA_ORDERS:
    case NX_FUNCTION_PREVENT_EUA_SYNTHETIC_ORDERS:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP:
    case NX_FUNCTION_FLAG_ORDERS_FOR_DYNAMIC_MAPPING_CHECKS:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP_IFEU:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP_IFLL:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP_LMEC:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP_XEUE:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP_XEUR:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP_XMAT:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP_XMON:
    case NX_FUNCTION_ENFORCE_EUA_ORDER_SPEED_BUMP_XMRV:
    case NX_FUNCTION_SPREAD_MACHINE_ICEBERG_ORDERS:
    case NX_FUNCTION_PRESERVE_DIRECT_API_GTC_CHLD_ORD_ON_DISCONNECT:
    // Prices
    case NX_FUNCTION_RATE_LIMITED_PRICE_UPDATE:
    case NX_FUNCTION_RATE_LIMITED_PRICE_UPDATE_WITH_SSL:
    // Screens
    case NX_FUNCTION_UI_SERVER_STORED_WORKSPACES:
    case NX_FUNCTION_UI_HOVER_VOLUME_AT_BEST:
    case NX_FUNCTION_UI_MARKET_BY_ORDER_CHART:
    case NX_FUNCTION_UI_KORVANE_PRICE_SHOW_GROUP_fORDERS:
    case NX_FUNCTION_UI_PRVATE_PRICE_REPLAY:
    case NX_FUNCTION_UI_USE_CORE_WORKSPACE_APPLICATIONS:
    case NX_FUNCTION_UI_USE_EXCHANGE_FORMAT_PRODUCT_NAMES:
    case NX_FUNCTION_UI_USER_TEXT_LIST:
    case NX_FUNCTION_UI_VALIDATED_USER_TEXT_LIST:
    case NX_FUNCTION_UI_USE_BLOOMBERG_FORMAT_PRODUCT_NAMES:
    case NX_FUNCTION_UI_USE_ALIAS_FORMAT_PRODUCT_NAMES:
    case NX_FUNCTION_UI_ENHANCED_WORKSPACE_SELECTION: return false;
    default: return true;
    }
}

bool nxFunctionEnum::RequestRequiresReceipt() const
{
    switch (_value)
    {
    case NX_FUNCTION_SUBMIT_ORDER:
    case NX_FUNCTION_AMEND_ORDER:
    case NX_FUNCTION_PULL_ORDER: return false;
    default: return true;
    }
}

std::string nxFunctionEnum::GetAsSubjectName() const
{
    // The word of 0 and 2 is shorter than the prefix; a caller has to hold a real function.
    return GetShortDescription().substr(tokenPrefix.size());
}
