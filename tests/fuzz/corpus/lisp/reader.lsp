; Reading and printing.
12
-7
+5
2147483647
; beyond 32 bits: a real
2147483648
-2147483648
1.5
2.
-.5
1e3
1e20
123456789.0
0.1
1e-7
'abc
'Été
'1+x
nil
NIL
t
()
'(1 . 2)
'(1 2 . 3)
'(1 . (2 3))
'(a"b"c)
'('a b)
(quote x)
"a\tb\n\"c\"\\"
"\101\102"
"\351t\351"
"\e"
"\U+00E9"
"C:\\plans\\x.lsp"
"deux
lignes"
(list 1 ; un commentaire
 2)
(list 1 ;| un
commentaire ) |; 2)
1 2 3
(type 'a)
(list (type 1) (type 1.0) (type "a") (type '(1)) (type nil) (type car) (type 'a))
(defun f (x) x)
f
car
(read "(a b \"c\")")
(read "12 13")
(read "")
; errors of the text
(list 1 (+ 2 3)
(a (b
)
"abc
1 ;| jamais
'( . a)
'(a . b c)
'(a .)
(read "(1 2")
'
