;; Emacs with eglot at work; prints FEATURE: ok, or what was seen instead.  Run in batch: commands as keys would call them.
(require 'eglot)
(require 'quor-gjf-mode)

(setq eglot-sync-connect t eglot-autoshutdown t eglot-confirm-server-initiated-edits nil eglot-extend-to-xref t
      enable-local-variables nil make-backup-files nil auto-save-default nil)

(defvar patience 60 "Seconds that one answer may take on a busy machine.")

(defun wait-for (test)
  "Wait until TEST gives something; return it."
  (let ((end (+ (float-time) patience)) value)
    (while (and (not (setq value (funcall test))) (< (float-time) end)) (accept-process-output nil 0.05))
    value))

(defun tell (feature value seen)
  "Print whether VALUE of FEATURE is there; SEEN is what is."
  (princ (format "%s: %s\n" feature (if value "ok" (format "%S" seen)))))

(defun codes ()
  "The codes of the findings that Flymake shows."
  (sort (mapcar (lambda (d) (let ((text (flymake-diagnostic-text d))) (and (string-match "GJF-[A-Z][0-9]+" text) (match-string 0 text))))
                (flymake-diagnostics))
        #'string<))

(defun line-text (number)
  "The text of line NUMBER."
  (save-excursion (goto-char (point-min)) (forward-line (1- number))
                  (buffer-substring-no-properties (point) (line-end-position))))

(defun at (line column)
  "Move to LINE and COLUMN, from 1 and 0."
  (goto-char (point-min)) (forward-line (1- line)) (forward-char column))

(defun set-line (number text)
  "Make TEXT of line NUMBER, and tell the server."
  (at number 0) (delete-region (point) (line-end-position)) (insert text)
  (eglot--signal-textDocument/didChange))

(defun tell-codes (feature wanted)
  "Wait for the WANTED codes."
  (tell feature (wait-for (lambda () (equal (codes) wanted))) (codes)))

(defun try-job (path)
  "Do with the job at PATH what people do."
  (find-file path)
  (tell "type of a .com" (eq major-mode 'quor-gjf-mode) major-mode)
  (eglot-ensure)
  (apply #'eglot (eglot--guess-contact))
  (flymake-mode 1)
  (flymake-start)
  (tell-codes "findings" '("GJF-M002" "GJF-R021"))
  (set-line 7 "0 1")
  (tell-codes "findings after an edit" '("GJF-R021"))
  (at 3 19)
  (let (text)
    (eglot-hover-eldoc-function (lambda (string &rest _) (setq text string)))
    (wait-for (lambda () text))
    (tell "hover" (and text (string-match-p "Optimizes" text)) text))
  (at 9 4)
  (xref-find-definitions (xref-backend-identifier-at-point (xref-find-backend)))
  (tell "definition" (= (line-number-at-pos) 12) (line-number-at-pos))
  (at 9 4)
  (let ((lines (mapcar (lambda (item) (xref-location-line (xref-item-location item)))
                       (xref-backend-references (xref-find-backend) (xref-backend-identifier-at-point (xref-find-backend))))))
    (tell "references" (equal lines '(9 10 12)) lines))
  (at 9 4)
  (eglot-rename "roh")
  (tell "rename" (equal (list (line-text 9) (line-text 10) (line-text 12)) '("H 1 roh" "H 1 roh 2 a" "roh 0.96"))
        (buffer-string))
  (let ((index (format "%S" (funcall imenu-create-index-function))))
    (tell "symbols" (and (string-match-p "route" index) (string-match-p "molecule" index)) index))
  (at 3 39)
  (let ((offered nil))
    (cl-letf (((symbol-function 'completing-read)
               (lambda (_ choices &rest _) (setq offered (mapcar (lambda (c) (if (consp c) (car c) c)) (all-completions "" choices))) "leave out tight")))
      (let ((last-nonmenu-event ?\r)) (eglot-code-actions (point) nil nil t)))
    (tell "mend a finding" (equal (line-text 3) "#p b3lyp/6-31g(d) opt freq scf=(tight)") (list (line-text 3) offered)))
  (eglot--signal-textDocument/didChange)
  (tell-codes "findings after mending" nil)
  (at 3 0)
  (end-of-line)
  (insert " int=ultraf")
  (eglot--signal-textDocument/didChange)
  (completion-at-point)
  (tell "completion" (string-suffix-p " int=ultrafine" (line-text 3)) (line-text 3))
  (set-line 8 "    O")
  (eglot-format-buffer)
  (tell "align" (not (string-prefix-p "    O" (line-text 8))) (line-text 8))
  (set-buffer-modified-p nil)
  (eglot-shutdown (eglot-current-server)))

(let ((arguments command-line-args-left))
  (setq command-line-args-left nil)
  (setq quor-gjf-program (car arguments))
  (setcdr (assoc '(quor-gjf-mode :language-id "gaussian") eglot-server-programs) (list (car arguments) "lsp"))
  (try-job (cadr arguments)))
