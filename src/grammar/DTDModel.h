// From the expression of a DTD to the term of a content model.
#pragma once

#include <functional>

#include "grammar/ContentModels.h"

namespace caretwell {

struct TDTDElement;
struct TDTDExprNode;

/// Says which name an element of the expression is; NoName leaves it out.
using TNameOfElement = std::function<TName(const TDTDElement&)>;

/// Groups nested deeper than anybody writes them come out as their names alone.
TTerm MakeTerm(TContentModels& models, TDTDExprNode* expression, const TNameOfElement& nameOf);

}  // namespace caretwell
