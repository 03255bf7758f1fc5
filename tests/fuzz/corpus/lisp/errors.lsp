(setq r (vl-catch-all-apply '/ '(1 0)))
(vl-catch-all-error-p r)
(vl-catch-all-error-message r)
(vl-catch-all-error-p (vl-catch-all-apply '/ '(4 2)))
(vl-catch-all-apply '+ '(1 2))
(vl-catch-all-error-message 5)
; bindings are taken back when a failure is caught
(setq x 1) (defun casse (x) (setq x 99) (car 5)) (vl-catch-all-apply 'casse '(2)) x
(vl-catch-all-error-message (vl-catch-all-apply 'exit nil))
; the handler sees the locals of the failing routine and restores what it needs
(setq vu nil) (defun risque (/ *error* ancien) (defun *error* (m) (setq vu (list m ancien))) (setq ancien 7) (/ 1 0))
(risque)
vu
*error*
(exit)
(quit)
; a failing handler only ends itself
(setq *error* '(lambda (m) (car 5))) (car 6)
(setq *error* nil)
(defun infinie (n) (1+ (infinie (1+ n))))
(infinie 0)
(defun a () (b)) (defun b () (if t (progn (cond (t (a)))))) (a)
(defun m (x) (mapcar 'm (list x))) (m 1)
(defun ap () (apply 'ap nil)) (ap)
(defun sa (x y) (vl-sort '(1.0 2.0) 'sa)) (sa 1 2)
(defun ev () (eval '(ev))) (ev)
(defun ca () (vl-catch-all-apply 'ca nil)) (type (ca))
; ordinary depth is fine
(defun compte (n) (if (= n 0) 0 (1+ (compte (1- n))))) (compte 1000)
(setq s "abcdefgh") (while t (setq s (strcat s s)))
(car)
(car 1 2)
(command "LINE")
