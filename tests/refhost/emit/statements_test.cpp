#include "tests/refhost/translation.h"

namespace refhost {
namespace {

TEST(StatementsInC, OfEveryKind) {
  const std::pair<const char*, const char*> rows[] = {
      {"c := Red; c := Blue; c := c; i := c; li := On; c := 5;",
       "@c = 0; @c = 6; (void)@c; @i = @c; @li = 1; @c = 5;"},
      {"lv := 3; lv := i; si := lv; pt := qt; pt.x := qt.y; a[1] := a[3]; a[i] := a[j + 1];",
       "@lv = 3; @lv = @i; @si = (i8)(@lv); @pt = @qt; @pt.x = @qt.y; @a.a[0] = @a.a[2]; "
       "@a.a[vel_index(@i, 1, 3)] = @a.a[vel_index((i16)(@j + 1), 1, 3)];"},
      {"b := a2[1, -1]; a2[i, j] := b; a2[1, j] := a2[i, 1]; fa[i].i := 3;",
       "@b = @a2.a[3]; @a2.a[vel_index(@i, 0, 1) * 3 + vel_index(@j, -1, 1)] = @b; "
       "@a2.a[vel_index(@j, -1, 1) + 3] = @a2.a[vel_index(@i, 0, 1) * 3 + 2]; @fa.a[vel_index(@i, "
       "0, 1)].i = 3;"},
      {"ip := ADR(i); ip := ADR(r); rf := REF(pt.y); ip := NULL; ip := l; l := ip; ud := ip;",
       "@ip = (vel_any_i16*)(&@i); @ip = (vel_any_i16*)(&@r); @rf = (vel_any_i16*)(&@pt.y); @ip = "
       "(vel_any_i16*)(NULL); @ip = (vel_any_i16*)(uintptr_t)(@l); @l = (i64)(uintptr_t)(@ip); @ud "
       "= (u32)(uintptr_t)(@ip);"},
      {"ip^ := rf^; ip[1] := ip[i]; ip := ip + 2; ip := ADR(a2) - 1; d := rp - rp; b := ip < rp; b "
       ":= ip = 0;",
       "(*@ip) = (*@rf); @ip[1] = @ip[@i]; @ip = (vel_any_i16*)((uintptr_t)@ip + "
       "(uintptr_t)(i64)2); @ip = (vel_any_i16*)((struct array_6_u8*)((uintptr_t)((&@a2)) - "
       "(uintptr_t)(i64)1)); @d = (i32)((uintptr_t)@rp - (uintptr_t)@rp); @b = (uintptr_t)@ip < "
       "(uintptr_t)@rp; @b = (uintptr_t)@ip == (uintptr_t)(i64)0;"},
      {"ptx^ := s; s := ptx^; s := ptx[1]; i := ppt^.x; ppt^.y := 1; ptx := ADR(s); ppt := "
       "ADR(pt); ip := ADR(%MW0); ud := ADR(%MW0);",
       "vel_string_set(@ptx, 6, @s); vel_string_set(@s, 6, @ptx); vel_string_set(@s, 6, "
       "((char(*)[6])@ptx)[1]); @i = @ppt->x; @ppt->y = 1; @ptx = (char*)(&@s); @ppt = (struct "
       "Pt*)(&@pt); @ip = (vel_any_i16*)((u8*)(_m + 0)); @ud = (u32)(uintptr_t)((u8*)(_m + 0));"},
      {"lt := lt - t; t := t * 2; t := 2 * t; t := t / 3; t := t / 1.5; lt := lt * 2; lt := 2.5 * "
       "lt; b := t > lt; t := -t;",
       "@lt = (i64)((u64)@lt - (u64)((i64)@t * 1000000)); @t = (i32)((u64)@t * (u64)2); @t = "
       "(i32)((u64)@t * (u64)2); @t = (i32)vel_div_i64(@t, (i64)3); @t = vel_truncate_i32((f64)@t "
       "/ 1.5); @lt = (i64)((u64)@lt * (u64)2); @lt = vel_truncate_i64((f64)@lt * 2.5); @b = "
       "((i64)@t * 1000000) > @lt; @t = (i32)(0 - (u32)@t);"},
      {"td := td + t; td := td - lt; dt1 := dt1 - t; dt1 := dt1 + lt; t := da - da; t := td - td; "
       "b := da < da; b := td = td; lt := t;",
       "@td = vel_tod_shift(@td, (i64)@t); @td = vel_tod_shift(@td, -vel_div_i64((i64)@lt, "
       "1000000)); @dt1 = vel_dt_shift(@dt1, -vel_div_i64((i64)@t, 1000)); @dt1 = "
       "vel_dt_shift(@dt1, vel_div_i64((i64)@lt, 1000000000)); @t = (i32)(((i64)@da - (i64)@da) * "
       "1000); @t = (i32)(((i64)@td - (i64)@td) * 1); @b = vel_value_u32(@da) < @da; @b = "
       "vel_value_u32(@td) == @td; @lt = (i64)(@t) * 1000000;"},
      {"lr := i ** 2; r := r ** 2; r := -r; r := r / i; lr := r * lr; d := i * u; ud := u * 2; u "
       ":= u / 2; d := d MOD 3; l := l * d; i := i / 2; i := i MOD -1; ul := ul - 1; ud := ud / 3;",
       "@lr = vel_pow((f64)@i, 2); @r = (f32)vel_pow((f64)@r, 2); @r = -@r; @r = @r / (f32)@i; @lr "
       "= (f64)@r * @lr; @d = (i32)((u32)(i32)@i * (u32)(i32)@u); @ud = (u16)((u32)@u * (u32)2); "
       "@u = vel_div_u16(@u, 2); @d = vel_mod_i32(@d, 3); @l = (i64)((u64)@l * (u64)(i64)@d); @i = "
       "vel_div_i16(@i, 2); @i = vel_mod_i16(@i, (-1)); @ul = @ul - 1ULL; @ud = vel_div_u32(@ud, "
       "3u);"},
      {"bt := bt OR 3; bt := NOT bt; w := NOT w; ud := NOT ud; b := NOT b; b := b XOR b; i := NOT "
       "i; l := i; d := u; r := i; w := w AND 16#FF; b := (b OR b) AND NOT (i < 3); l := l XOR i;",
       "@bt = @bt | 3; @bt = vel_not_u8(@bt); @w = vel_not_u16(@w); @ud = (u32)~@ud; @b = !@b; @b "
       "= @b ^ @b; @i = (i16)~@i; @l = @i; @d = @u; @r = @i; @w = @w & 255; @b = (@b | @b) & (!(@i "
       "< 3)); @l = @l ^ (i64)@i;"},
      {R"(b := s = 'a'; b := ws <> "x"; s := 'abc'; ws := "y"; s := s; b := s >= s; )",
       "@b = vel_string_compare(@s, \"a\") == 0; @b = vel_wstring_compare(@ws, u\"x\") != 0; "
       "vel_string_set(@s, 6, \"abc\"); vel_wstring_set(@ws, 81, u\"y\"); vel_string_set(@s, 6, "
       "@s); @b = vel_string_compare(@s, @s) >= 0;"},
      {"i := F(1); i := F(1, 2) + F(3); N(1); i := F(a := 1, q => j); i := F(b := 4, q => a[1]); "
       "F(1); i := F(u, b := ud);",
       "i16 vel_t1; i16 vel_t3; @i = F(1, 3, &vel_t1); @i = ({ i16 vel_t2 = F(1, 2, &vel_t1); "
       "(i16)(vel_t2 + F(3, 3, &vel_t3)); }); N(1); @i = (vel_t1 = F(1, 3, &vel_t3), @j = vel_t3, "
       "vel_t1); @i = (vel_t3 = F(0, 4, &vel_t1), @a.a[0] = vel_t1, vel_t3); (void)(F(1, 3, "
       "&vel_t3)); @i = F(@u, @ud, &vel_t3);"},
      {"xr REF= i; xr := xr + 1; xr REF= ip^; xr REF= 0; b := __ISVALIDREF(xr); ip "
       ":= ADR(xr); rf := REF(xr); xs REF= s; xs := xs; ptx := ADR(xs); xr REF=xr; ud := "
       "SIZEOF(xs); fb(io := xr); xb REF= fa[i]; xb(io := i, o => xr); xb.i := xr;",
       "struct B* vel_t1; @xr = (vel_any_i16*)&@i; (*@xr) = (i16)((*@xr) + 1); @xr = "
       "(vel_any_i16*)@ip; @xr = NULL; @b = (@xr != NULL); @ip = (vel_any_i16*)(&(*@xr)); @rf = "
       "(vel_any_i16*)(@xr); @xs = (char*)@s; vel_string_set(@xs, 6, @xs); @ptx = (char*)(&*@xs); "
       "@xr = (vel_any_i16*)@xr; @ud = sizeof(char[6]); @fb.io = @xr; B_body(&@fb); @xb = (struct "
       "B*)&@fa.a[vel_index(@i, 0, 1)]; vel_t1 = @xb; vel_t1->io = &@i; vel_any_i16* const vel_t2 "
       "= @xr; B_body(vel_t1); (*vel_t2) = vel_t1->o; @xb->i = (*@xr);"},
      {"i := F(1, 2, j); fb(3, r, i);",
       "i16 vel_t1; i16 vel_t2; @i = (vel_t2 = F(1, 2, &vel_t1), @j = vel_t1, vel_t2); @fb.i = 3; "
       "@fb.io = &@i; B_body(&@fb); @r = @fb.o;"},
      {"fb(io := i); fa[0](io := i, i := 4); fb(3, io := a[i], o => j); fa[i](io := pt.x, o => r); "
       "pfb^(io := i); fb(io := ip^); i := fb.o; fb.i := fa[1].o;",
       "struct B* vel_t1; struct B* vel_t2; struct B* vel_t3; @fb.io = &@i; B_body(&@fb); vel_t1 = "
       "&@fa.a[0]; vel_t1->io = &@i; vel_t1->i = 4; B_body(vel_t1); @fb.i = 3; @fb.io = "
       "&@a.a[vel_index(@i, 1, 3)]; B_body(&@fb); @j = @fb.o; vel_t2 = &@fa.a[vel_index(@i, 0, "
       "1)]; vel_t2->io = &@pt.x; B_body(vel_t2); @r = vel_t2->o; vel_t3 = @pfb; vel_t3->io = &@i; "
       "B_body(vel_t3); @fb.io = @ip; B_body(&@fb); @i = @fb.o; @fb.i = @fa.a[1].o;"},
      {"b := i = j AND_THEN b; b := b OR_ELSE (b AND b); IF b THEN i := 1; ELSIF MOVE(s = '\"(') "
       "THEN RETURN; ELSE i := 2; END_IF;",
       "@b = (@i == @j) && @b; @b = @b || (@b & @b); if (@b) { @i = 1; } else if "
       "(vel_string_compare(@s, \"\\042(\") == 0) { goto vel_return; } else { @i = 2; } "
       "vel_return:;"},
      {"WHILE i < 3 DO IF b THEN EXIT; END_IF; CONTINUE; END_WHILE; REPEAT i := i + 1; UNTIL i > 3 "
       "OR b END_REPEAT; REPEAT UNTIL b END_REPEAT;",
       "while (@i < 3) { if (@b) { break; } continue; } do { @i = (i16)(@i + 1); } while (!((@i > "
       "3) | @b)); do { } while (!@b);"},
      {"CASE i OF 1, 3: i := 1; 4..6: i := 2; 8, 10..12: ; ELSE i := 3; END_CASE; CASE j OF ELSE i "
       ":= 1; END_CASE; CASE j OF END_CASE;",
       "i16 vel_t1; vel_t1 = @i; if (vel_t1 == 1 || vel_t1 == 3) { @i = 1; } else if (vel_t1 >= 4 "
       "&& vel_t1 <= 6) { @i = 2; } else if (vel_t1 == 8 || (vel_t1 >= 10 && vel_t1 <= 12)) { } "
       "else { @i = 3; } (void)(@j); @i = 1; (void)(@j);"},
      {"CASE c OF Red: i := 1; Green..Blue: i := 2; END_CASE; CASE bt OF 300: ; 1: ; END_CASE; "
       "CASE ul OF -1: ; 18446744073709551615: ; -2..3: ; END_CASE;",
       "i16 vel_t1; i64 vel_t2; u64 vel_t3; vel_t1 = @c; if (vel_t1 == 0) { @i = 1; } else if "
       "(vel_t1 >= 5 && vel_t1 <= 6) { @i = 2; } vel_t2 = @bt; if (vel_t2 == 300) { } else if "
       "(vel_t2 == 1) { } vel_t3 = @ul; if (0) { } else if (vel_t3 == 18446744073709551615ULL) { } "
       "else if (vel_t3 >= 0 && vel_t3 <= 3) { }"},
      {"FOR i := 1 TO 10 BY 3 DO ; END_FOR; FOR i := 1 TO j BY -2 DO ; END_FOR; FOR ul := 1 TO ul "
       "DO ; END_FOR;",
       "i64 vel_t1; u8 vel_t2; u64 vel_t3; u8 vel_t4; @i = 1; for (; @i <= 10; @i = (i16)((u64)@i "
       "+ 3u)) { } @i = 1; vel_t1 = @j; for (vel_t2 = (i64)@i >= vel_t1; vel_t2; vel_t2 = "
       "vel_for_more_i64(@i, vel_t1, -2), @i = (i16)((u64)@i + (u64)(-2))) { } @ul = (u64)(1); "
       "vel_t3 = @ul; for (vel_t4 = (u64)@ul <= vel_t3; vel_t4; vel_t4 = vel_for_more_u64(@ul, "
       "vel_t3, 1), @ul = (u64)((u64)@ul + (u64)(1))) { }"},
      {"FOR i := 10 TO j BY j DO ; END_FOR; FOR ip^ := 1 TO 3 DO ; END_FOR;",
       "i64 vel_t1; i64 vel_t2; u8 vel_t3; @i = 10; vel_t1 = @j; vel_t2 = @j; for (vel_t3 = vel_t2 "
       ">= 0 ? (i64)@i <= vel_t1 : (i64)@i >= vel_t1; vel_t3; vel_t3 = vel_for_more_i64(@i, "
       "vel_t1, vel_t2), @i = (i16)((u64)@i + (u64)(vel_t2))) { } (*@ip) = 1; for (; (*@ip) <= 3; "
       "(*@ip) = (i16)((u64)(*@ip) + 1u)) { }"},
      {"FOR ul := 0 TO ul BY ul DO ; END_FOR; FOR l := l TO 0 BY -9223372036854775808 DO ; "
       "END_FOR; i := a[ul];",
       "u64 vel_t1; u64 vel_t2; u8 vel_t3; @ul = (u64)(0); vel_t1 = @ul; vel_t2 = @ul; for (vel_t3 "
       "= (u64)@ul <= vel_t1; vel_t3; vel_t3 = vel_for_up_u64(@ul, vel_t1, vel_t2), @ul = "
       "(u64)((u64)@ul + (u64)(vel_t2))) { } (void)@l; for (; @l >= 0; @l = (i64)((u64)@l - "
       "9223372036854775808u)) { } @i = @a.a[vel_index_u64(@ul, 1, 3)];"},
      {"ws := \"\xC3\xBC\"; s := '\xFC';",
       R"(vel_wstring_set(@ws, 81, u"\303\274"); vel_string_set(@s, 6, "\374");)"},
      {"FOR i := 32767 TO 32767 DO ; END_FOR;",
       "i64 vel_t1; u8 vel_t2; @i = 32767; vel_t1 = 32767; for (vel_t2 = (i64)@i <= vel_t1; "
       "vel_t2; vel_t2 = vel_for_more_i64(@i, vel_t1, 1), @i = (i16)((u64)@i + (u64)(1))) { }"},
      {"i := ADD(i, j, 2); b := GT(3, i, j); b := GT(F(i), i, 1); t := MUL_TIME(t, 2); t := "
       "TIME(); b := NE(i, 1); w := XOR(w, bt, 1); b := AND(b, i = 1, b);",
       "i16 vel_t1; @i = ((i16)((i16)(@i + @j) + 2)); @b = ((3 > @i) & (@i > @j)); @b = (({ u8 "
       "vel_t3 = ({ i16 vel_t2 = F(@i, 3, &vel_t1); vel_t2 > @i; }); (vel_t3) & (@i > 1); })); @t "
       "= ((i32)((u64)@t * (u64)2)); @t = ((i32)vel_scan_time); @b = (@i != 1); @w = ((@w ^ "
       "(u16)@bt) ^ 1); @b = ((@b & (@i == 1)) & @b);"},
      {"i := LEN(s); s := LEFT(s, i); s := MID(IN := s, L := 1, P := j); s := CONCAT(s, 'a'); s := "
       "CONCAT('a', x2, 'b'); x2 := REPLACE(s, 'a', 1, 2); s := INSERT('b', MOVE(x2), 1); i := "
       "FIND(s, 'a'); s := LEFT(SEL(b, s, x2), 1); b := LEFT(s, 1) = 'x'; ws := RIGHT(ws, 2); s := "
       "DELETE(ptx^, 1, 1);",
       "char vel_t1[6]; char vel_t2[7]; u16 vel_t3[81]; @i = vel_string_length(@s); "
       "vel_string_set(@s, 6, vel_string_left(vel_t1, 6, @s, (i64)@i)); vel_string_set(@s, 6, "
       "vel_string_mid(vel_t1, 6, @s, 1LL, (i64)@j)); vel_string_set(@s, 6, "
       "vel_string_concat(vel_t2, 7, 2, (const char*[]){@s, \"a\"})); vel_string_concat(@s, 6, 3, "
       "(const char*[]){\"a\", @x2, \"b\"}); vel_string_replace(@x2, 4, @s, \"a\", 1LL, 2LL); "
       "vel_string_insert(@s, 5, \"b\", ((@x2)), 1LL); @i = vel_string_find(@s, \"a\"); "
       "vel_string_set(@s, 6, vel_string_left(vel_t1, 6, SEL((@b), (@s), (@x2)), 1LL)); @b = "
       "vel_string_compare(vel_string_left(vel_t1, 6, @s, 1LL), \"x\") == 0; vel_wstring_set(@ws, "
       "81, vel_wstring_right(vel_t3, 81, @ws, 2LL)); vel_string_set(@s, 6, "
       "vel_string_delete(vel_t1, 6, @ptx, 1LL, 1LL));"},
      {"i := MUX(K := 1, IN0 := i, IN1 := 3); i := LIMIT(IN := j, MN := 0, MX := 1);",
       "@i = ((i16)FC_MUX_INT(2, 1, (i16)@i, (i16)3)); @i = LIMIT((0), (@j), (1));"},
      {"pt := SEL(b, pt, qt); c := SEL(b, c, c); ip := SEL(b, ip, ip); pt := MOVE(pt); r := MAX(r, "
       "1); r := MAX(r, lr); l := MAX(l, i); ul := MAX(ud, ul); b := SEL(b, l, d) = 3; i := MUX(i, "
       "j, 2);",
       "@pt = SEL((@b), (@pt), (@qt)); @c = SEL((@b), (@c), (@c)); @ip = (vel_any_i16*)(SEL((@b), "
       "(@ip), (@ip))); (void)@pt; @r = MAX((@r), (1)); @r = MAX((@r), (@lr)); @l = MAX((@l), "
       "(@i)); @ul = (u64)((i64)(MAX((@ud), (@ul)))); @b = ((i64)(SEL((@b), (@l), (@d)))) == 3LL; "
       "@i = ((i16)FC_MUX_INT(2, @i, (i16)@j, (i16)2));"},
      {"ul := TO_ULINT(ip); b := TO_BOOL(ip); s := TO_STRING(i); i := TO_INT(1.0E30); i := "
       "REAL_TO_INT(r + 1); lr := SQRT(r); r := SQRT(r); r := EXPT(r, 2.0); i := ABS(-i);",
       "@ul = ((u64)((uintptr_t)(@ip))); @b = ((((uintptr_t)(@ip)))!=0); vel_string_set(@s, 6, "
       "INT_TO_STRING((@i), _returnString)); @i = __real_to_integer((vel_value_f64(1.0e30)), i16); "
       "@i = ({ f32 vel_t1 = @r + 1; __real_to_integer((vel_t1), i16); }); @lr = (f32)SQRT((@r)); "
       "@r = SQRT((@r)); @r = EXPT((@r), (2.0)); @i = ABS(((i16)-@i));"},
      {"b := MEP(b); b := MEF(b) OR MEP(NOT b); ud := SIZEOF(Pt); ud := SIZEOF(a[1]); ud := "
       "SIZEOF(INT); ud := SIZEOF(fb) + 1; i := ROL(i + 1, 2); w := SHL(w, 2 + i); u := SHR(u, 1);",
       "@b = (_mep(@b,((u8*)(_m + 18432)))); @b = ((_mef(@b,((u8*)(_m + 18433))))) | "
       "((_mep(!@b,((u8*)(_m + 18434))))); @ud = sizeof(struct Pt); @ud = sizeof(i16); @ud = "
       "sizeof(i16); @ud = ((u32)sizeof(struct B)) + 1u; @i = ({ i16 vel_t1 = (i16)(@i + 1); "
       "ROL(vel_t1, 2, i16, u16); }); @w = ({ i16 vel_t2 = (i16)(2 + @i); ((u16)(SHL((@w), "
       "(vel_t2)))); }); @u = ((u16)(SHR((@u), (1))));"},
      {"i := F(EN := b, a := 1);", "i16 vel_t1; if (@b) { @i = F(1, 3, &vel_t1); }"},
      {"i := F(EN := b, a := 1, ENO => b); i := 1 + F(EN := b, a := 1); i := 1 + F(a := 1, NOT ENO "
       "=> b); i := F(a := 1, ENO => b) + F(2);",
       "u8 vel_t1; i16 vel_t2; i16 vel_t8; vel_t1 = @b; if (vel_t1) { @i = F(1, 3, &vel_t2); } @b "
       "= vel_t1; @i = (i16)(1 + ((@b) ? (F(1, 3, &vel_t2)) : 0)); @i = (i16)(1 + ({ u8 vel_t3 = "
       "1; __auto_type vel_t4 = vel_t3 ? (F(1, 3, &vel_t2)) : 0; @b = !vel_t3; vel_t4; })); @i = "
       "({ i16 vel_t7 = ({ u8 vel_t5 = 1; __auto_type vel_t6 = vel_t5 ? (F(1, 3, &vel_t2)) : 0; @b "
       "= vel_t5; vel_t6; }); (i16)(vel_t7 + F(2, 3, &vel_t8)); });"},
      {"i := ADD(EN := b, IN1 := 1, IN2 := 2); i := LIMIT(EN := b, MN := 0, IN := 3, MX := 2, ENO "
       "=> b); fb(EN := b, io := i, ENO => b); fb(EN := b, io := i); s := LEFT(EN := b, IN := s, L "
       ":= 1);",
       "u8 vel_t1; char vel_t2[6]; if (@b) { @i = (3); } vel_t1 = @b; if (vel_t1) { @i = "
       "LIMIT((0), (3), (2)); } @b = vel_t1; vel_t1 = @b; if (vel_t1) { @fb.io = &@i; "
       "B_body(&@fb); } @b = vel_t1; if (@b) { @fb.io = &@i; B_body(&@fb); } if (@b) { "
       "vel_string_set(@s, 6, vel_string_left(vel_t2, 6, @s, 1LL)); }"},
      {"%MX0.0 := b; bt := %MB7; %MW2 := w; %MD3 := %ID0; b := %IX0.1; i.3 := b; b := w.15; %QX0.1 "
       ":= %MX0.1; %MW0 := i; i := %MW0; IRDBIT(%IX0.0, b); IWRBIT(%QX0.0, b); ZRST(%MX0.0, "
       "%MX0.3);",
       "sbit(0, @b); @bt = VEL_MEM(u8, 7); VEL_MEM(u16, 4) = @w; VEL_MEM(u32, 12) = VEL_MEM(u32, "
       "16384); @b = gbit(131073); vsbit(@i, 3, @b); @b = vgbit((@w, 15)); sbit(139265, gbit(1)); "
       "VEL_MEM(u16, 0) = (u16)(@i); @i = (i16)(VEL_MEM(u16, 0)); @b = _READIDIRECT(131072); "
       "_WRITEODIRECT(139264, @b); mset(0,4,1,0);"},
      {"i := k; l := lo; l := -9223372036854775807; ul := 18446744073709551615; lr := 1.0e300; r "
       ":= 0.1; bt := 16#FF; si := -128; i := INT#-5; t := T#1s; lt := LTIME#1us; td := TOD#1:0:0; "
       "b := TRUE; b := 1; ws := \"a$0001\"; s := '$0a\"$'';",
       "@i = @k; @l = @lo; @l = -9223372036854775807LL; @ul = 18446744073709551615ULL; @lr = "
       "1.0e300; @r = 0.1; @bt = 255; @si = -128; @i = -5; @t = 1000; @lt = 1000LL; @td = "
       "3600000u; @b = 1; @b = 1; vel_wstring_set(@ws, 81, u\"a\\001\"); vel_string_set(@s, 6, "
       "\"\\012\\042'\");"},
      {"i := 2 + 3 * 4; l := -(5) - 1; i := i + (2 - 3); r := 1 / 2; d := 10000000000 / 100000; i "
       ":= F(3 - 4); i := - - 1; l := 9223372036854775807 + 1;",
       "i16 vel_t1; @i = 14; @l = -6; @i = (i16)(@i + (i16)(-1)); @r = 0; @d = (i32)(100000); @i = "
       "F(-1, 3, &vel_t1); @i = (i8)-(-1); @l = (i64)((u64)9223372036854775807LL + (u64)1LL);"},
      {"b := GE(3, i, j); b := EQ(s, 'a', s); b := LE(1, i, i); b := LT(i, j, 3); i := SUB(IN2 := "
       "1, IN1 := i); i := DIV(17, j); i := MOD(i, 5); i := MUL(i, j, 2); t := DIV_TIME(t, i); lt "
       ":= MUL_LTIME(lt, 3); w := OR(w, 1, bt); w := AND(w, 2);",
       "@b = ((3 >= @i) & (@i >= @j)); @b = ((vel_string_compare(@s, \"a\") == 0) & "
       "(vel_string_compare(\"a\", @s) == 0)); @b = ((1 <= @i) & (vel_value_i16(@i) <= @i)); @b = "
       "((@i < @j) & "
       "(@j < 3)); @i = ((i16)(@i - 1)); @i = (vel_div_i16(17, @j)); @i = (vel_mod_i16(@i, 5)); @i "
       "= ((i16)((i16)(@i * @j) * 2)); @t = ((i32)vel_div_i64(@t, (i64)@i)); @lt = ((i64)((u64)@lt "
       "* (u64)3)); @w = ((@w | 1) | (u16)@bt); @w = (@w & 2);"},
      {"w := w OR 16#FFFF; w := 255 OR (w OR 16#FF00); w := w OR 16#8000; w := w OR (w XOR MAX(w, "
       "65535)); w := d OR 65535; d := d OR 65535; i := SEL(b AND TRUE, i, j); b := b AND TRUE; "
       "ud := LIMIT(i, ud, 9); d := LIMIT(0, d, ud); d := SHL(-1, 3); d := SHR(-1, 3);",
       "@w = @w | vel_value_u16(65535); @w = vel_value_u16(255) | vel_value_u16((@w | 65280)); @w "
       "= @w | 32768; @w = @w | vel_value_u16((@w ^ (MAX((@w), (65535))))); @w = (u16)(@d | "
       "vel_value_i32(65535)); @d = @d | 65535; @i = SEL((@b & vel_value_u8(1)), (@i), (@j)); @b = "
       "@b & 1; @ud = LIMIT(((u32)(@i)), (@ud), (9u)); @d = LIMIT((0), (@d), ((i32)(@ud))); @d = "
       "((i8)(SHL((vel_value_i8(-1)), (3)))); @d = ((i8)(SHR((-1), (3))));"},
      {"l := LINT#1000000 * LINT#1000000; lt := LTIME#1ns - LTIME#2ns; b := ULINT#1 - ULINT#2 > "
       "ULINT#5; lr := UDINT#0 - UDINT#1; b := 1 - UDINT#2 > 0; l := MAX(LINT#3 * LINT#3, LINT#0); "
       "ul := SHL(ULINT#5, 32) + 1; lt := MAX(LTIME#1s, T#2s); d := LTIME_TO_DINT(T#5ms); t := "
       "T#24d + T#24d;",
       "@l = (i64)((u64)1000000LL * (u64)1000000LL); @lt = (i64)((u64)1LL - (u64)2LL); @b = (1ULL "
       "- 2ULL) > 5ULL; @lr = 0u - 1u; @b = (1u - 2u) > 0u; @l = MAX(((i64)((u64)3LL * (u64)3LL)), "
       "(0LL)); @ul = (((u64)(SHL((5ULL), (32))))) + 1ULL; @lt = MAX((1000000000LL), (((i64)(2000) "
       "* 1000000))); @d = ((i32)(((i64)(5) * 1000000))); @t = (i32)((u32)2073600000 + "
       "(u32)2073600000);"},
      {"fb(io := i, NOT o => j); s := TO_STRING(SEL(b, i, j) + 1); i := SEL(b, i, j) / 2; l := "
       "-SEL(b, i, l) * 2; w := NOT SEL(b, w, w); b := NOT SEL(b, i > 0, i < 0); lt := SEL(b, lt + "
       "lt, t) + lt; b := SEL(b, t, t) > lt;",
       "@fb.io = &@i; B_body(&@fb); @j = (i16)~@fb.o; vel_string_set(@s, 6, "
       "INT_TO_STRING(((i16)((SEL((@b), (@i), (@j))) + 1)), _returnString)); @i = "
       "vel_div_i16((SEL((@b), (@i), (@j))), 2); @l = (i16)(((i16)-((i16)(SEL((@b), (@i), "
       "((i16)(@l)))))) * 2); @w = vel_not_u16(SEL((@b), (@w), (@w))); @b = !(SEL((@b), (@i > 0), "
       "(@i < 0))); @lt = (i64)((u64)(SEL((@b), ((i64)((u64)@lt + (u64)@lt)), (((i64)(@t) * "
       "1000000)))) + (u64)@lt); @b = ((i64)(SEL((@b), (@t), (@t))) * 1000000) > @lt;"},
      {"d := d * 2 - i; l := -l; l := -9223372036854775808; i := -i; lt := lt + t; t := t + T#1s; "
       "b := NOT bt = 16#F0 AND NOT i = 5; i.3 := i.4; i := j + limit(0, i, 100); i := MAX(MIN(i, "
       "j), 3); si := i; u := u * u; i.%X3 := b AND_THEN b; "
       "l.%D1.%B2 := w.%W0.%B1; %MW3.%B1 := a[1].%B0; b := ul.%D1.%W1.7; l.%L0 := SHL(ul.%D1, "
       "1);",
       "@d = (i32)((u32)(i32)((u32)@d * (u32)2) - (u32)(i32)@i); @l = (i64)(0 - (u64)@l); @l = "
       "(-9223372036854775807LL - 1); @i = (i16)-@i; @lt = (i64)((u64)@lt + (u64)((i64)@t * "
       "1000000)); @t = (i32)((u32)@t + (u32)1000); @b = (vel_not_u8(@bt) == 240) & (((i16)~@i) == "
       "5); vsbit(@i, 3, vgbit((@i, 4))); @i = (i16)(@j + (LIMIT((0), (@i), (100)))); @i = ({ i16 "
       "vel_t1 = MIN((@i), (@j)); MAX((vel_t1), (3)); }); @si = (i8)(@i); @u = (u16)((u32)@u * "
       "(u32)@u); vsbit(@i, 3, @b && @b); VEL_SET_PART(u8, @l, 48, VEL_PART(u8, @w, 8)); "
       "VEL_SET_PART(u8, VEL_MEM(u16, 6), 8, VEL_PART(u8, @a.a[0], 0)); @b = vgbit((@ul, 55)); "
       "VEL_SET_PART(u64, @l, 0, ({ u32 vel_t2 = VEL_PART(u32, @ul, 32); ((u32)(SHL((vel_t2), "
       "(1)))); }));"},
      {"s := 'a$'b$0A'; b := s < 'x'; ws := \"$00e4\"; s := LTIME_TO_STRING(t); s := CONCAT('x', "
       "BOOL_TO_STRING(b)); ws := LEFT(\"xy\", i); b := MUX(i, i = j, FALSE); i := ROL(i, LIMIT(0, "
       "i, 9)); ul := SIZEOF(i) - ud; ud := SIZEOF(STRING[9]) + SIZEOF(wstring);",
       "vel_string_set(@s, 6, \"a'b\\012\"); @b = vel_string_compare(@s, \"x\") < 0; "
       "vel_wstring_set(@ws, 81, u\"\\344\"); vel_string_set(@s, 6, LTIME_TO_STRING((((i64)(@t) * "
       "1000000)), _returnString)); vel_string_concat(@s, 6, 2, (const char*[]){\"x\", "
       "BOOL_TO_STRING((@b), _returnString)}); vel_wstring_left(@ws, 3, u\"xy\", (i64)@i); @b = "
       "((u8)FC_MUX_INT(2, @i, (u8)(@i == @j), (u8)0)); @i = ({ i16 vel_t1 = LIMIT((0), (@i), "
       "(9)); ROL(@i, (vel_t1), i16, u16); }); @ul = ((u32)sizeof(i16)) - @ud; @ud = "
       "((u32)sizeof(char[10])) + ((u32)sizeof(u16[81]));"},
      {"lr := LIMIT(0.1, SEL(b, 0.2, 0.5), 0.3) + SQRT(0.1); lr := -(0.1 + r * 0.2); c := MAX(Red, "
       "c); c := MUX(i, Red, c); i := ABS(SINT#-128) + ABS(-128); l := LIMIT(ud, 5, bt);",
       "@lr = (({ f64 vel_t1 = SEL((@b), (0.2), (0.5)); LIMIT((0.1), (vel_t1), (0.3)); })) + "
       "(SQRT((0.1))); @lr = -((f32)0.1 + (@r * (f32)0.2)); @c = MAX((0), (@c)); @c = "
       "((i16)FC_MUX_INT(2, @i, (i16)0, (i16)@c)); @i = (i16)((i16)(ABS(((i8)(-128)))) + "
       "(ABS((-128)))); @l = LIMIT((@ud), (5u), (@bt));"},
      {"b := MIN(r, 0.1) = r; b := MOVE(0.1) = r; r := r / MOVE(0.5); b := SEL(b, "
       "INT_TO_STRING(1), s) = 'x'; lr := "
       "SEL(b, i + 1, j) ** 2; "
       "MAX(i, j); l := LIMIT(MIN(ul, ud), l, lo); l := lo / ULINT#18446744073709551614; d := "
       "MAX(d, d) + LIMIT(0, i, j); ul := MOVE(16#7FFFFFFF) * ud; bt := bt / bt AND (bt AND 24) "
       "AND 224;",
       "@b = ((f32)(MIN((@r), ((f32)(0.1))))) == @r; @b = ((((f32)(0.1)))) == @r; @r = @r / "
       "((f32)(((0.5)))); @b = vel_string_compare(SEL((@b), (INT_TO_STRING((1), _returnString)), "
       "(@s)), \"x\") == 0; @lr = vel_pow((f64)(SEL((@b), ((i16)(@i + 1)), (@j))), 2); "
       "(void)(MAX((@i), (@j))); @l = ({ i64 vel_t1 = (i64)(MIN((@ul), (@ud))); LIMIT((vel_t1), "
       "(@l), (@lo)); }); @l = vel_div_i64(@lo, (i64)18446744073709551614ULL); @d = "
       "(i32)((u32)(MAX((@d), (@d))) + (u32)(i32)(LIMIT((0), (@i), (@j)))); @ul = "
       "(((2147483647u))) * @ud; @bt = vel_value_u8((vel_div_u8(@bt, @bt) & (@bt & 24))) & "
       "vel_value_u8(224);"},
      {"CASE bt OF 0..5, 200..255: ; END_CASE; CASE si OF -128..-1: ; END_CASE; CASE si OF -129: ; "
       "END_CASE; CASE l OF -9223372036854775808: ; END_CASE; CASE bt OF 0, 256: ; END_CASE; CASE "
       "ul OF -1: ; -2..3, -5..-4: ; END_CASE;",
       "u8 vel_t1; i8 vel_t2; i64 vel_t3; i64 vel_t4; i64 vel_t5; u64 vel_t6; vel_t1 = @bt; if "
       "((vel_t1 >= 0 && vel_t1 <= 5) || (vel_t1 >= 200 && vel_t1 <= 255)) { } vel_t2 = @si; if "
       "(vel_t2 >= -128 && vel_t2 <= -1) { } vel_t3 = @si; if (vel_t3 == -129) { } vel_t4 = @l; if "
       "(vel_t4 == (-9223372036854775807LL - 1)) { } vel_t5 = @bt; if (vel_t5 == 0 || vel_t5 == "
       "256) { } vel_t6 = @ul; if (0) { } else if ((vel_t6 >= 0 && vel_t6 <= 3) || 0) { }"},
      {"s := CONCAT(INT_TO_STRING(EN := b, i, ENO => b), 'x'); s := SEL(F(1, 2) > 0, s, "
       "INT_TO_STRING(i));",
       "char vel_t2[81]; i16 vel_t3; vel_string_concat(@s, 6, 2, (const char*[]){({ u8 vel_t1 = "
       "@b; vel_string_set(vel_t2, 81, vel_t1 ? (INT_TO_STRING((@i), _returnString)) : \"\"); @b = "
       "vel_t1; vel_t2; }), \"x\"}); vel_string_set(@s, 6, ({ u8 vel_t4 = F(1, 2, &vel_t3) > 0; "
       "vel_string_set(vel_t2, 81, INT_TO_STRING((@i), _returnString)); SEL((vel_t4), (@s), "
       "(vel_t2)); }));"},
      {"s := TO_STRING(SEL(b, a[1], a[2]) + 1); i := SEL(b, a[1], a[2]) / a[1]; l := -SEL(b, a[1], "
       "l) * 2; b := NOT SEL(b, a[1] > 0, a[2] < 0); b := SEL(b, a2[0, 0], b) = b;",
       "vel_string_set(@s, 6, INT_TO_STRING(((i16)((SEL((@b), (@a.a[0]), (@a.a[1]))) + 1)), "
       "_returnString)); @i = vel_div_i16((SEL((@b), (@a.a[0]), (@a.a[1]))), @a.a[0]); @l = "
       "(i64)((u64)((i64)(0 - (u64)(SEL((@b), (@a.a[0]), (@l))))) * (u64)2LL); @b = !(SEL((@b), "
       "(@a.a[0] > 0), (@a.a[1] < 0))); @b = (SEL((@b), (@a2.a[1]), (@b))) == @b;"},
  };
  for (const auto& [source, expected] : rows) {
    EXPECT_EQ(expected, inOneLine(scanText(*analysed(withEverything(source))))) << source;
  }
}

}  // namespace
}  // namespace refhost
