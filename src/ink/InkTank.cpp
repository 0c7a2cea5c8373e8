#include "ink/InkTank.h"

InkTank::InkTank() = default;

InkTank::InkTank(int type) : CGUIInkTank(type) {}

InkTank::~InkTank() = default;
