#include "embedded/data/exchange/MakeExchange.h"

#include "embedded/data/exchange/AttributeExchange.h"
#include "embedded/data/exchange/CalculationExchange.h"
#include "embedded/data/exchange/CatalogueExchange.h"
#include "embedded/data/exchange/GuideExchange.h"
#include "embedded/data/exchange/LibraryExchange.h"
#include "embedded/data/exchange/LibraryListExchange.h"

namespace embedded {

std::unique_ptr<TableExchange> MakeExchange(TableKind kind, const LibraryScope& scope)
{
    switch (kind) {
    case TableKind::Catalogue:
        return MakeCatalogueExchange();
    case TableKind::Attributes:
        return MakeAttributeExchange();
    case TableKind::Bill:
        return MakeBillExchange(scope);
    case TableKind::Quota:
        return MakeQuotaExchange(scope);
    case TableKind::Guide:
        return MakeGuideExchange(scope);
    case TableKind::Libraries:
        return MakeLibraryListExchange();
    case TableKind::Calc:
        break;
    }
    return MakeCalculationExchange();
}

} // namespace embedded
