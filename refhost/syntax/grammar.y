// The grammar of Structured Text. Each action is one call of the TreeFactory. The token stream
// delivers balanced blocks (token_stream.h).
//
// The tables are canonical LR with default reductions in consistent states only, so that an error
// is detected at the first invalid token and the list of expected tokens is exact.
%skeleton "lalr1.cc"
%require "3.8"
%language "c++"
%define api.namespace {refhost::grammar}
%define api.parser.class {Parser}
%define api.value.type {SemanticValue}
%define api.location.type {Span}
%define lr.type canonical-lr
%define lr.default-reduction consistent
%define parse.error custom
%locations
%expect 0
%parse-param {TokenStream& tokens} {TreeFactory& make} {SyntaxErrors& errors}
%lex-param {TokenStream& tokens}

%code requires {
#include <string>

#include "refhost/syntax/tree_factory.h"

namespace refhost {
class TokenStream;
}  // namespace refhost

#define YYLLOC_DEFAULT(Current, Rhs, N)                                 \
  (Current).begin = N ? YYRHSLOC(Rhs, 1).begin : YYRHSLOC(Rhs, 0).end; \
  (Current).end = YYRHSLOC(Rhs, N).end
}

%code {
#include "refhost/syntax/expected_tokens.h"
#include "refhost/syntax/token_stream.h"

namespace refhost::grammar {

static int yylex(SemanticValue*, Span* span, TokenStream& tokens) { return tokens.next(*span); }
static constexpr Value kNone{nullptr, 0};

}  // namespace refhost::grammar
}

%token YYEOF 0 "end of file"
%token PROGRAM END_PROGRAM FUNCTION END_FUNCTION FUNCTION_BLOCK END_FUNCTION_BLOCK
%token VAR VAR_INPUT VAR_OUTPUT VAR_IN_OUT VAR_TEMP VAR_GLOBAL VAR_EXTERNAL  // must be consecutive
%token END_VAR CONSTANT RETAIN NON_RETAIN PERSISTENT  // these four must be consecutive
%token AT R_EDGE F_EDGE STRING WSTRING
// IF must be the first keyword of statements and RETURN the last.
%token IF THEN ELSIF ELSE END_IF CASE OF END_CASE FOR TO BY DO END_FOR WHILE END_WHILE
%token REPEAT UNTIL END_REPEAT EXIT CONTINUE RETURN
%token TYPE END_TYPE STRUCT END_STRUCT ARRAY POINTER REF_TO REFERENCE
%token MISTAKE_END  // put in where a block begins or ends before the next ';'
%token NO_TYPE  // inserted for an invalid result type
%token CONFIGURATION END_CONFIGURATION VAR_CONFIG RESOURCE ON END_RESOURCE TASK WITH
%token TEST END_TEST SETUP END_SETUP TEARDOWN END_TEARDOWN
%token IDENTIFIER "identifier" DIRECT_ADDRESS "direct address"
%token INTEGER "integer" NUMBER "number" LITERAL "literal"
%token ASSIGN "':='" BINDS "'REF='" ARROW "'=>'" RANGE "'..'" POWER "'**'"
%token NOT_EQUAL "'<>'" LESS_EQUAL "'<='" GREATER_EQUAL "'>='"

// A ';' after the header of a unit is part of the header.
%precedence HEADER
%precedence ';'
// An error in the first declaration of a block is shifted before anything is reduced.
%precedence FIRST
%precedence error
// A name after an invalid result type does not begin a statement.
%precedence IDENTIFIER

%left OR OR_ELSE
%left XOR
%left AND AND_THEN
%left '=' NOT_EQUAL
%left '<' '>' LESS_EQUAL GREATER_EQUAL
%left '+' '-'
%left '*' '/' MOD
%left POWER
%token NOT

%type <value> string_type unit_name test_name return_type var_blocks var_block var_body var_decl config_decl address
%type <value> type_spec simple_type plain_type reference_type part_type struct_type unnamed_type dimension
%type <value> enum_value string_length initial initial_item repetitions aggregate element field type_declaration struct_declaration
%type <value> broken_decl broken_member member task statement_list statement block_statement
%type <value> else_part condition
%type <value> for_start step label label_line
%type <value> variable access call expression operand atom signed argument
%type <list> var_block_items var_decls config_decls names statements elsifs case_items labels arguments
%type <list> connections connection_items argument_items dimensions enum_values elements fields members subscripts
%type <section> var_keyword
%type <edge> edge
%type <qualifiers> qualifiers

%start file

%%

file: %empty | units;

units:
  unit
| mistake
| units unit
| units mistake
;

mistake: error  { tokens.resumeInPlace(); };

// After an error in a block the parser resumes at the next ';', which the token stream inserts if a
// block begins or ends first.
mistake_end:
  ';'          { yyerrok; tokens.endMistake(); }
| MISTAKE_END
;

unit:
  PROGRAM unit_name header_end var_blocks statement_list END_PROGRAM
    { make.unit(@$, vel::POUType::Program, $2, kNone, $4, $5); }
| FUNCTION unit_name return_type header_end var_blocks statement_list END_FUNCTION
    { make.unit(@$, vel::POUType::Function, $2, $3, $5, $6); }
| FUNCTION_BLOCK unit_name header_end var_blocks statement_list END_FUNCTION_BLOCK
    { make.unit(@$, vel::POUType::FunctionBlock, $2, kNone, $4, $5); }
| TYPE type_declarations END_TYPE
| TYPE type_declarations type_declaration END_TYPE  { make.typeDeclaration($3); }
| global_block
| config_block
| TEST test_name header_end var_blocks statement_list END_TEST
    { make.testUnit(@$, TestPart::Test, $2, $4, $5); }
| SETUP header_end var_blocks statement_list END_SETUP
    { make.testUnit(@$, TestPart::Setup, make.name(@1), $3, $4); }
| TEARDOWN header_end var_blocks statement_list END_TEARDOWN
    { make.testUnit(@$, TestPart::Teardown, make.name(@1), $3, $4); }
| CONFIGURATION unit_name { make.beginConfiguration($2); } configuration END_CONFIGURATION
    { make.endConfiguration(@$); }
| ';'
;

unit_name:
  IDENTIFIER  { $$ = make.name(@1); }
| error       { $$ = kNone; tokens.resumeInPlace(); }
;

test_name:
  LITERAL     { $$ = make.name(@1); }
| INTEGER     { $$ = make.name(@1); }
| NUMBER      { $$ = make.name(@1); }
| IDENTIFIER  { $$ = make.name(@1); }
| error    { $$ = kNone; tokens.resumeInPlace(); }
;

return_type:
  %empty            { $$ = kNone; }
| ':' IDENTIFIER    { $$ = make.namedType(@2); }
| ':' unnamed_type  { $$ = $2; }
| ':' reference_type  { $$ = $2; }
// The FUNCTION is declared in spite of the error.
| ':' mistaken_type  { $$ = make.namedType({@1.end, @1.end}); }
;

mistaken_type:
  error                     { tokens.resumeInPlace(); }
| error NO_TYPE             { tokens.resumeInPlace(); }
| error IDENTIFIER NO_TYPE  { tokens.resumeInPlace(); }
;

header_end:
  %empty  %prec HEADER
| ';'
;

// --- Declarations ---

var_blocks: var_block_items  %prec HEADER  { $$ = make.varBlocks(@$, $1); };

var_block_items:
  %empty                     { $$ = make.list(); }
| var_block_items var_block  { $$ = make.append($1, $2); }
| var_block_items global_block
| var_block_items ';'
;

var_block: var_keyword var_body  { $$ = make.inSection($1, $2); };

global_block: VAR_GLOBAL var_body  { make.globals($2); };

config_block: VAR_CONFIG qualifiers config_decls END_VAR  { make.configured(make.varBlock(@$, $2, $3)); };

config_decls:
  %empty  %prec FIRST           { $$ = make.list(); }
| error mistake_end             { $$ = make.list(); }
| config_decls config_decl ';'  { $$ = make.append($1, $2); }
| config_decls ';'              { $$ = $1; }
| config_decls error mistake_end  { $$ = $1; }
;

config_decl:
  variable address ':' type_spec initial
    { $$ = make.varDecl(@$, make.append(make.list(), $1), $2, $4, $5); }
;

var_body:
  qualifiers var_decls END_VAR        { $$ = make.varBlock(@$, $1, $2); }
;

var_keyword:
  VAR           { $$ = VarSection::Var; }
| VAR_INPUT     { $$ = VarSection::Input; }
| VAR_OUTPUT    { $$ = VarSection::Output; }
| VAR_IN_OUT    { $$ = VarSection::InOut; }
| VAR_TEMP      { $$ = VarSection::Temp; }
| VAR_EXTERNAL  { $$ = VarSection::External; }
;

qualifiers:
  %empty                 { $$ = Qualifiers{false, Retention::Unsaid}; }
| qualifiers CONSTANT    { $$ = Qualifiers{true, $1.retention}; }
| qualifiers RETAIN      { $$ = Qualifiers{$1.constant, Retention::Retain}; }
| qualifiers PERSISTENT  { $$ = Qualifiers{$1.constant, Retention::Retain}; }
| qualifiers NON_RETAIN  { $$ = Qualifiers{$1.constant, Retention::NonRetain}; }
;

var_decls:
  %empty  %prec FIRST     { $$ = make.list(); }
| error mistake_end  { $$ = make.list(); }
| var_decls var_decl ';'  { $$ = make.append($1, $2); }
| var_decls ';'           { $$ = $1; }
| var_decls error mistake_end  { $$ = $1; }
| var_decls broken_decl  { $$ = make.append($1, $2); }
;

// The variables are declared in spite of the error, with their type if it could be parsed.
broken_decl:
  names error mistake_end
    { $$ = make.varDecl(@1, $1, kNone, kNone, kNone); }
| names address ':' error mistake_end
    { $$ = make.varDecl(@1, $1, $2, kNone, kNone); }
| names address ':' IDENTIFIER error mistake_end
    { $$ = make.varDecl({@1.begin, @4.end}, $1, $2, make.namedType(@4), kNone); }
| names address ':' type_spec ASSIGN error mistake_end
    { $$ = make.withoutValue(make.varDecl({@1.begin, @4.end}, $1, $2, $4, kNone)); }
;

var_decl:
  names address ':' type_spec initial
    { $$ = make.varDecl(@$, $1, $2, $4, $5); }
| names address ':' IDENTIFIER edge initial
    { $$ = make.edgeDetecting(make.varDecl(@$, $1, $2, make.namedType(@4), $6), $5); }
| names address ':' type_spec BINDS expression
    { $$ = make.binding(make.varDecl(@$, $1, $2, $4, $6)); }
// A variable without a name; its address serves as one.
| AT DIRECT_ADDRESS ':' type_spec initial
    {
      const NodeList names = make.append(make.list(), make.name(@2));
      $$ = make.varDecl(@$, names, make.name(@2), $4, $5);
    }
;

edge:
  R_EDGE  { $$ = Edge::Rising; }
| F_EDGE  { $$ = Edge::Falling; }
;

names:
  IDENTIFIER            { $$ = make.append(make.list(), make.name(@1)); }
| names ',' IDENTIFIER  { $$ = make.append($1, make.name(@3)); }
;

address:
  %empty                     { $$ = kNone; }
| AT DIRECT_ADDRESS          { $$ = make.name(@2); }
| AT IDENTIFIER              { $$ = make.name(@2); }
| AT IDENTIFIER '.' INTEGER  { $$ = make.name({@2.begin, @4.end}); }
;

type_spec: simple_type | struct_type;

simple_type:
  plain_type
| '(' enum_values ')' IDENTIFIER  { $$ = make.enumType(@$, @4, $2); }
;

plain_type:
  IDENTIFIER  { $$ = make.namedType(@1); }
| unnamed_type
| reference_type
| IDENTIFIER '(' expression RANGE expression ')'
    { $$ = make.subrangeType(@$, @1, make.range({@3.begin, @5.end}, $3, $5)); }
| '(' enum_values ')'  { $$ = make.enumType(@$, {@1.begin, @1.begin}, $2); }
| IDENTIFIER '(' enum_values ')'  { $$ = make.enumType(@$, @1, $3); }
;

// Types that can be the operand of an operator.
unnamed_type:
  string_type
| ARRAY '[' dimensions ']' OF part_type  { $$ = make.arrayType(@$, $3, $6); }
| POINTER TO part_type
    { $$ = make.pointerType(@$, vel::ASTType::PointerTypeSpec, $3); }
| REF_TO part_type
    { $$ = make.pointerType(@$, vel::ASTType::ReferenceTypeSpec, $2); }
;

reference_type: REFERENCE TO part_type  { $$ = make.boundType(@$, $3); };

part_type: plain_type | struct_type;

struct_type:
  STRUCT members END_STRUCT  { $$ = make.structType(@$, $2); }
;

// The ';' after END_STRUCT is optional.
members:
  %empty                { $$ = make.list(); }
| members member        { $$ = make.append($1, $2); }
| members ';'           { $$ = $1; }
| members error mistake_end  { $$ = $1; }
| members broken_member  { $$ = make.append($1, $2); }
;

broken_member:
  names error mistake_end  { $$ = make.varDecl(@1, $1, kNone, kNone, kNone); }
| names ':' error mistake_end  { $$ = make.varDecl(@1, $1, kNone, kNone, kNone); }
;

member:
  names ':' simple_type initial ';'
    { $$ = make.varDecl({@1.begin, @4.end}, $1, kNone, $3, $4); }
| names ':' simple_type BINDS expression ';'
    { $$ = make.binding(make.varDecl({@1.begin, @5.end}, $1, kNone, $3, $5)); }
| names ':' struct_type
    { $$ = make.varDecl(@$, $1, kNone, $3, kNone); }
| names ':' struct_type ASSIGN initial_item ';'
    { $$ = make.varDecl({@1.begin, @5.end}, $1, kNone, $3, make.operand($5)); }
;

dimensions:
  dimension                 { $$ = make.append(make.list(), $1); }
| dimensions ',' dimension  { $$ = make.append($1, $3); }
;

dimension:
  expression RANGE expression  { $$ = make.range(@$, $1, $3); }
| '*'                          { $$ = make.anyRange(@$); }
;

enum_values:
  enum_value                  { $$ = make.append(make.list(), $1); }
| enum_values ',' enum_value  { $$ = make.append($1, $3); }
;

enum_value:
  IDENTIFIER                    { $$ = make.enumValue(@$, @1, kNone); }
| IDENTIFIER ASSIGN expression  { $$ = make.enumValue(@$, @1, $3); }
;

// --- Data types ---

type_declarations:
  %empty
| type_declarations type_declaration ';'  { make.typeDeclaration($2); }
| type_declarations struct_declaration    { make.typeDeclaration($2); }
| type_declarations ';'
| type_declarations error mistake_end
| type_declarations IDENTIFIER ':' error mistake_end
    { make.typeDeclaration(make.typeDecl(@2, @2, kNone, kNone)); }
;

type_declaration:
  IDENTIFIER ':' simple_type initial
    { $$ = make.typeDecl(@$, @1, $3, $4); }
| IDENTIFIER ':' struct_type ASSIGN initial_item
    { $$ = make.typeDecl(@$, @1, $3, make.operand($5)); }
;

struct_declaration: IDENTIFIER ':' struct_type  { $$ = make.typeDecl(@$, @1, $3, kNone); };

string_type:
  STRING string_length   { $$ = make.stringType(@$, "STRING", $2); }
| WSTRING string_length  { $$ = make.stringType(@$, "WSTRING", $2); }
;

string_length:
  %empty              { $$ = kNone; }
| '[' expression ']'  { $$ = make.operand($2); }
| '(' expression ')'  { $$ = make.operand($2); }
;

initial:
  %empty                            { $$ = kNone; }
| ASSIGN initial_item               { $$ = make.operand($2); }
// The values of an array without brackets.
| ASSIGN initial_item ',' elements
    { $$ = make.arrayValue({@2.begin, @4.end}, make.prepend($2, $4)); }
;

initial_item:
  expression
| aggregate
| repetitions '(' elements ')'  { $$ = make.repeat(@$, $1, $3); }
| repetitions '(' ')'           { $$ = make.repeat(@$, $1, make.list()); }
;

// A name followed by '(' is parsed as a call.
repetitions:
  INTEGER             { $$ = make.literal(@1); }
| '(' expression ')'  { $$ = make.parenthesised(@$, $2); }
;

aggregate:
  '[' elements ']'  { $$ = make.arrayValue(@$, $2); }
| '(' fields ')'    { $$ = make.structValue(@$, $2); }
;

elements:
  element               { $$ = make.append(make.list(), $1); }
| elements ',' element  { $$ = make.append($1, $3); }
;

element: initial_item  { $$ = make.operand($1); };

fields:
  field             { $$ = make.append(make.list(), $1); }
| fields ',' field  { $$ = make.append($1, $3); }
;

field: IDENTIFIER ASSIGN initial_item  { $$ = make.input(@$, @1, $3); };

// --- Configurations ---

configuration:
  %empty
| configuration configuration_item
| configuration RESOURCE unit_name processor { make.beginResource($3); } resource END_RESOURCE
    { make.endResource({@2.begin, @7.end}); }
| configuration error mistake_end
;

processor: %empty | ON IDENTIFIER;

resource:
  %empty
| resource configuration_item
| resource error mistake_end
;

configuration_item:
  global_block
| config_block
| TASK IDENTIFIER '(' arguments ')' ';'
    { make.task(@$, @2, {@3.begin, @5.end}, $4); }
| PROGRAM qualifiers IDENTIFIER task ':' IDENTIFIER connections ';'
    { make.programInstance(@$, $2, @3, $4, @6, @7, $7); }
| ';'
;

task:
  %empty           { $$ = kNone; }
| WITH IDENTIFIER  { $$ = make.name(@2); }
;

connections:
  %empty                    { $$ = make.list(); }
| '(' ')'                   { $$ = make.list(); }
| '(' connection_items ')'  { $$ = $2; }
;

connection_items:
  argument                       { $$ = make.append(make.list(), $1); }
| task_of_block                  { $$ = make.list(); }
| connection_items ',' argument  { $$ = make.append($1, $3); }
| connection_items ',' task_of_block
;

// The tasks of function block instances have no effect: each runs with its program.
task_of_block: IDENTIFIER WITH IDENTIFIER;

// --- Statements ---

statement_list: statements  { $$ = make.statementList(@$, $1); };

statements:
  %empty                            { $$ = make.list(); }
| statements statement              { $$ = make.append($1, $2); }
| statements error mistake_end  { $$ = $1; }
;

statement:
  ';'                             { $$ = kNone; }
| variable ASSIGN expression ';'  { $$ = make.assignment({@1.begin, @3.end}, $1, @3, $3); }
| variable BINDS expression ';'   { $$ = make.bindingStatement({@1.begin, @3.end}, $1, $3); }
| call ';'                        { $$ = make.callStatement(@1, $1); }
| EXIT ';'                        { $$ = make.jump(StatementKind::Exit, @1); }
| CONTINUE ';'                    { $$ = make.jump(StatementKind::Continue, @1); }
| RETURN ';'                      { $$ = make.jump(StatementKind::Return, @1); }
| block_statement
;

block_statement:
  IF condition THEN statement_list elsifs else_part END_IF
    { $$ = make.ifStatement(@$, $2, $4, $5, $6); }
| CASE condition OF case_items else_part END_CASE
    { $$ = make.caseStatement(@$, $2, $4, $5); }
| FOR for_start TO expression step DO statement_list END_FOR
    { $$ = make.forStatement(@$, $2, $4, $5, $7); }
| FOR mistaken_start statement_list END_FOR
    { $$ = kNone; }
| WHILE condition DO statement_list END_WHILE
    { $$ = make.loop(StatementKind::While, @$, $2, $4); }
| REPEAT statement_list UNTIL condition until_end END_REPEAT
    { $$ = make.loop(StatementKind::Repeat, @$, $2, $4); }
;

mistaken_start: error DO  { tokens.resumeInPlace(); };

until_end: %empty | ';';

condition:
  expression  { $$ = make.operand($1); }
| error       { $$ = kNone; tokens.resumeInPlace(); }
;

elsifs:
  %empty                                      { $$ = make.list(); }
| elsifs ELSIF condition THEN statement_list  { $$ = make.append($1, $3, $5); }
;

else_part:
  %empty               { $$ = kNone; }
| ELSE statement_list  { $$ = $2; }
;

// Labels and statements are in one list, since one token of lookahead cannot tell them apart.
case_items:
  %empty                            { $$ = make.list(); }
| case_items statement              { $$ = make.append($1, $2); }
| case_items label_line             { $$ = make.append($1, $2); }
| case_items error mistake_end  { $$ = $1; }
;

label_line: labels ':'  { $$ = make.caseLabels(@1, $1); };

labels:
  label             { $$ = make.append(make.list(), $1); }
| labels ',' label  { $$ = make.append($1, $3); }
;

label:
  expression                   { $$ = make.operand($1); }
| expression RANGE expression  { $$ = make.range(@$, $1, $3); }
;

for_start: variable ASSIGN expression  { $$ = make.assignment(@$, $1, @3, $3); };

step:
  %empty         { $$ = kNone; }
| BY expression  { $$ = make.operand($2); }
;

// --- Expressions ---

expression:
  operand
| expression OR expression             { $$ = make.binary(ExprKind::Or, @$, $1, $3); }
| expression OR_ELSE expression        { $$ = make.binary(ExprKind::OrElse, @$, $1, $3); }
| expression XOR expression            { $$ = make.binary(ExprKind::Xor, @$, $1, $3); }
| expression AND expression            { $$ = make.binary(ExprKind::And, @$, $1, $3); }
| expression AND_THEN expression       { $$ = make.binary(ExprKind::AndThen, @$, $1, $3); }
| expression '=' expression            { $$ = make.binary(ExprKind::Equal, @$, $1, $3); }
| expression NOT_EQUAL expression      { $$ = make.binary(ExprKind::NotEqual, @$, $1, $3); }
| expression '<' expression            { $$ = make.binary(ExprKind::Less, @$, $1, $3); }
| expression '>' expression            { $$ = make.binary(ExprKind::Greater, @$, $1, $3); }
| expression LESS_EQUAL expression     { $$ = make.binary(ExprKind::LessEqual, @$, $1, $3); }
| expression GREATER_EQUAL expression  { $$ = make.binary(ExprKind::GreaterEqual, @$, $1, $3); }
| expression '+' expression            { $$ = make.binary(ExprKind::Add, @$, $1, $3); }
| expression '-' expression            { $$ = make.binary(ExprKind::Subtract, @$, $1, $3); }
| expression '*' expression            { $$ = make.binary(ExprKind::Multiply, @$, $1, $3); }
| expression '/' expression            { $$ = make.binary(ExprKind::Divide, @$, $1, $3); }
| expression MOD expression            { $$ = make.binary(ExprKind::Modulo, @$, $1, $3); }
| expression POWER expression          { $$ = make.binary(ExprKind::Power, @$, $1, $3); }
;

operand:
  atom
| number  { $$ = make.literal(@1); }
| signed
;

// A sign before a number is part of the literal.
signed:
  '-' number   { $$ = make.signedNumber(@$, @2); }
| '+' number   { $$ = make.signedNumber(@$, @2); }
| '-' atom     { $$ = make.unary(ExprKind::Negate, @$, $2); }
| '+' atom     { $$ = $2; }
| '-' signed   { $$ = make.unary(ExprKind::Negate, @$, $2); }
| '+' signed   { $$ = $2; }
| NOT operand  { $$ = make.unary(ExprKind::Not, @$, $2); }
;

atom:
  LITERAL             { $$ = make.literal(@1); }
| variable
| call
| '(' expression ')'  { $$ = make.parenthesised(@$, $2); }
;

number: INTEGER | NUMBER;

variable:
  IDENTIFIER                   { $$ = make.variable(@1); }
| DIRECT_ADDRESS               { $$ = make.variable(@1); }
| variable '.' INTEGER         { $$ = make.bit(@$, $1, @3); }
| variable '.' DIRECT_ADDRESS  { $$ = make.part(@$, $1, @3); }
| access
;

access:
  variable '.' member_name     { $$ = make.member(@$, $1, @3); }
| variable '[' subscripts ']'  { $$ = make.element(@$, $1, $3); }
| variable '^'                 { $$ = make.dereference(@$, $1); }
;

subscripts:
  expression                 { $$ = make.append(make.list(), make.operand($1)); }
| subscripts ',' expression  { $$ = make.append($1, make.operand($3)); }
;

call:
  IDENTIFIER '(' arguments ')'
    { $$ = make.call(@$, make.name(@1), {@2.begin, @4.end}, $3); }
| IDENTIFIER '(' unnamed_type ')'
    { $$ = make.callOfType(@$, @1, $3); }
| operator_name '(' arguments ')'
    { $$ = make.call(@$, make.name(@1), {@2.begin, @4.end}, $3); }
| access '(' arguments ')'
    { $$ = make.call(@$, $1, {@2.begin, @4.end}, $3); }
;

// Operators that can also be called like functions.
operator_name: AND | OR | XOR | MOD;

arguments:
  %empty          { $$ = make.list(); }
| argument_items
;

argument_items:
  argument                     { $$ = make.append(make.list(), $1); }
| argument_items ',' argument  { $$ = make.append($1, $3); }
;

argument:
  expression                      { $$ = make.operand($1); }
| formal_name ASSIGN expression   { $$ = make.input(@$, @1, $3); }
| formal_name ARROW variable      { $$ = make.output(@$, @1, $3, false); }
| NOT formal_name ARROW variable  { $$ = make.output(@$, @2, $4, true); }
;

// Keywords that are names here, since nothing but a name is possible.
formal_name: IDENTIFIER | name_keyword;
member_name: IDENTIFIER | name_keyword;
name_keyword: CONSTANT | RETAIN | NON_RETAIN | AT | ARRAY | POINTER | STRING | WSTRING;

%%

namespace refhost::grammar {

void Parser::error(const Span& span, const std::string& text) {
  // The text is empty if the error has been reported already.
  if (!text.empty()) errors.syntax(span, text);
}

void Parser::report_syntax_error(const context& found) const {
  symbol_kind_type kinds[YYNTOKENS];
  const int count = found.expected_tokens(kinds, YYNTOKENS);
  ExpectedTokens expected;
  for (int i = 0; i < count; ++i) expected.add(symbol_name(kinds[i]));
  if (tokens.refuses(found.location(), expected)) return;
  Remarks* const said = errors.unexpected(found.location(), expected.text());
  if (said != nullptr) tokens.suggest(found.location(), expected, *said);
}

}  // namespace refhost::grammar
