#pragma once

#include <QtGlobal>

/// A model (Base) that is filled row by row, while its view may paint in between.
template<typename Base>
class FillableModel : public Base
{
public:
    using Base::Base;

    /// For the life of the object the view sees an empty model, however often it paints; it reads the model anew at the
    /// end. May be nested.
    class Filling
    {
    public:
        explicit Filling(FillableModel &model) : m_model(model)
        {
            if (m_model.m_fillings > 0) {
                ++m_model.m_fillings;
                return;
            }
            m_model.beginResetModel();
            ++m_model.m_fillings;
            m_model.endResetModel();
        }
        ~Filling()
        {
            if (m_model.m_fillings > 1) {
                --m_model.m_fillings;
                return;
            }
            m_model.beginResetModel();
            --m_model.m_fillings;
            m_model.filled();
            m_model.endResetModel();
        }
        Q_DISABLE_COPY_MOVE(Filling)

    private:
        FillableModel &m_model;
    };

protected:
    bool isFilling() const { return m_fillings > 0; }
    /// Called when the model is filled, just before the view reads it; a sorted model sorts here.
    virtual void filled() { }

private:
    int m_fillings = 0;
};
