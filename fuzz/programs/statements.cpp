#include "fuzz/programs/generator.h"

namespace generated {

Statements Generator::body(int depth) {
  Statements result;
  for (int count = 1 + random_.below(3); count > 0; --count) addStatement(result, depth);
  return result;
}

void Generator::addStatement(Statements& to, int depth) {
  const int choice = depth > 0 ? random_.below(100) : 0;
  const Type& boolType = type(Type::Bool, 1);
  Statement result;
  if (choice < 60) {
    result.target = place(Access::Write, isHeld);
    if (result.target.type == nullptr) return;
    result.exprs = {assigned(*result.target.type, kDepth)};
    if (result.exprs[0].type == nullptr) return;
  } else if (choice < 68) {
    result.kind = Statement::If;
    for (int i = 1 + random_.below(2); i > 0; --i) {
      result.exprs.push_back(expression(boolType, kDepth));
      result.bodies.push_back(body(depth - 1));
    }
    if (random_.chance(50)) result.bodies.push_back(body(depth - 1));
  } else if (choice < 74) {
    result.kind = Statement::Block;
    result.target = place(Access::Write, [](const Type& each) { return each.kind == Type::Block; });
    if (result.target.type == nullptr) return;
    if (!arguments(result.exprs, *result.target.type->block, kDepth)) return;
  } else if (choice < 80) {
    if (controls_.empty() && random_.chance(80)) return;
    result.kind = Statement::If;
    result.exprs = {expression(boolType, kDepth)};
    const Statement leave{controls_.empty()    ? Statement::Return
                          : random_.chance(50) ? Statement::Exit
                                               : Statement::Continue};
    result.bodies = {{leave}};
  } else if (choice < 87) {
    result.kind = Statement::Case;
    const Type::Kind kind = random_.chance(45) ? Type::Enumeration : Type::Signed;
    result.exprs = {place(Access::Read, [=](const Type& each) {
      return each.kind == kind || (kind == Type::Signed && each.integer());
    })};
    if (result.exprs[0].type == nullptr) return;
    const Type& type = *result.exprs[0].type;
    if (type.integer()) result.exprs = {expression(type, 1)};
    for (int i = 1 + random_.below(3); i >= 0; --i) {
      result.bodies.push_back(body(depth - 1));
      if (i > 0) result.labels.push_back(label(type));
    }
  } else {
    loop(result, depth);
    if (result.bodies.empty()) return;
  }
  to.push_back(std::move(result));
}

std::pair<Expr, Expr> Generator::label(const Type& type) {
  if (type.kind == Type::Enumeration) {
    const Expr one = literal(type, random_.chance(70) ? Bare::Always : Bare::Never);
    return {one, one};
  }
  const Wide first = random_.below(8) - (type.kind == Type::Signed ? 2 : 0);
  return {constant(type, first, Bare::Always),
          constant(type, first + random_.below(3), Bare::Always)};
}

// Without a body when there is no variable that counts.
void Generator::loop(Statement& result, int depth) {
  std::vector<const Variable*> found;
  for (const Variable& each : unit().variables) {
    if (each.type->integer() && allows(each, Access::Refer)) found.push_back(&each);
  }
  if (found.empty()) return;
  const Variable& counter = *random_.pick(found);
  const Type& type = *counter.type;
  const Type& boolType = generated::type(Type::Bool, 1);
  const Expr control{Expr::Variable, &type, counter.name};
  result.target = control;
  controls_.push_back(counter.name);
  result.bodies = {body(depth - 1)};
  if (random_.chance(60)) {
    result.kind = Statement::For;
    const Wide start = wholeNumber(type);
    const int sign = type.kind == Type::Signed && random_.chance(40) ? -1 : 1;
    const Wide end = integer(type, start + sign * random_.below(9)).number;
    const Wide step = sign * (1 + random_.below(3));
    result.exprs = {
        integerLiteral(type, start, Bare::Always),
        random_.chance(60) ? constant(type, end, Bare::Always) : expression(type, 1, Bare::Always),
        random_.chance(70) ? constant(type, step, Bare::Always) : control};
  } else {
    // The control variable counts, so that most of these end.
    result.kind = random_.chance(50) ? Statement::While : Statement::Repeat;
    const bool whileLoop = result.kind == Statement::While;
    Expr next = operation("+", type, {control, integerLiteral(type, 1, Bare::Always)});
    result.bodies[0].insert(result.bodies[0].begin(), {Statement::Assign, control, {next}});
    Expr goes = operation(whileLoop ? "<" : ">=", boolType,
                          {control, integerLiteral(type, random_.below(9), Bare::Always)});
    result.exprs = {
        operation(whileLoop ? "AND" : "OR", boolType, {std::move(goes), expression(boolType, 2)})};
  }
  controls_.pop_back();
}

}  // namespace generated
