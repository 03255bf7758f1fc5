(defun f (x / y) (setq y (mapcar (quote (lambda (z) (* z x))) (list 1 2.5))) (apply (quote +) y)) (f 3)
